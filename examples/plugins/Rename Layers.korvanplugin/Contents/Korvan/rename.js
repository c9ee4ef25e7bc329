const { expand } = require('./lib/pattern');

/** @type {{ numbered: string, described: string }} */
let presets;

function readPresets() {
    presets = require('./presets.json');
}

/**
 * @param {Korvan.Context} context
 * @param {string} pattern
 */
function rename(context, pattern) {
    const layers = context.selection.length > 0 ? context.selection : context.document.layers();
    layers.forEach((layer, index) => {
        const before = layer.name();
        layer.setName(expand(pattern, layer, index + 1));
        console.log(`${before} → ${layer.name()}`);
    });
    return layers.length;
}

/** @param {Korvan.Context} context */
function numberLayers(context) {
    return rename(context, presets.numbered);
}

/**
 * The host may give a pattern of its own: korvan-plugins run … --context '{"pattern": "%t %n"}'
 * @param {Korvan.Context<{ pattern?: string }>} context
 */
function renameWithPattern(context) {
    return rename(context, context.pattern ?? presets.described);
}

function sayGoodbye() {
    console.log('Every layer has its name.');
}
