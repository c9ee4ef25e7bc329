const { EOL } = require('os');
const { layersWithDepth } = require('../layers');

/** @param {Korvan.Context} context */
function onRun(context) {
    const lines = layersWithDepth(context.document).map(
        ({ layer, depth }) => `${'  '.repeat(depth)}- ${layer.name()} (${layer.type()})`);
    const outline = lines.join(EOL);
    log(outline);
    return outline;
}
