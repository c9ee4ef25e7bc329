const process = require('process');
const querystring = require('querystring');
const { isDeepStrictEqual } = require('util');
const { activeDocument } = require('korvan/dom');

function parseName(name) {
    const [plain, query] = name.split('?');
    const entries = Object.entries(querystring.parse(query ?? ''));
    return { plain, style: Object.fromEntries(entries.map(([key, value]) => [key, Number.isNaN(Number(value)) ? value : Number(value)])) };
}

// The name keeps what its layer has no use for, so that nothing is lost.
function readNames() {
    let changed = 0;
    for (const layer of activeDocument().findAll('[name*="?"]')) {
        const { plain, style } = parseName(layer.name);
        try {
            const complete = { ...layer.style, ...style };
            if (!isDeepStrictEqual(complete, layer.style)) {
                layer.style = complete;
                ++changed;
            }
            layer.name = plain;
        } catch (error) {
            process.emitWarning(`${plain}: ${error.message}`);
        }
    }
    return changed;
}

function writeNames() {
    const styled = activeDocument().layers.filter((layer) => Object.keys(layer.style).length > 0);
    for (const layer of styled)
        layer.name = `${parseName(layer.name).plain}?${querystring.stringify({ ...layer.style })}`;
    return styled.length;
}
