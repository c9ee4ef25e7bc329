const { Buffer } = require('buffer');
const { StringDecoder } = require('string_decoder');
const { activeDocument } = require('korvan/dom');

// UTF-8 that was read as Latin-1 has a letter for each byte. Undefined for a text that is something else.
function mended(text) {
    const bytes = Buffer.from(text, 'latin1');
    if (bytes.toString('latin1') !== text)
        return undefined; // it has letters that Latin-1 has not
    const decoder = new StringDecoder('utf8');
    const result = decoder.write(bytes) + decoder.end();
    return result.includes('\ufffd') || result === text ? undefined : result;
}

function onRun() {
    let changed = 0;
    for (const layer of activeDocument().findAll('text')) {
        const text = mended(layer.text);
        if (text === undefined)
            continue;
        console.log(`${layer.text} → ${text}`);
        layer.text = text;
        ++changed;
    }
    return changed;
}
