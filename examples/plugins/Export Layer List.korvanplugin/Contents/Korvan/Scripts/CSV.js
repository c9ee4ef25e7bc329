const { layersWithDepth } = require('../layers');

const quoted = (text) => `"${String(text).replaceAll('"', '""')}"`;

/**
 * A promise keeps the command running until it settles, and its value is what the command returns.
 * @param {Korvan.Context} context
 */
async function onRun(context) {
    /** @type {(string | number)[][]} */
    const rows = [['name', 'type', 'depth', 'x', 'y', 'width', 'height']];
    for (const { layer, depth } of layersWithDepth(context.document)) {
        const { x, y, width, height } = layer.frame();
        rows.push([quoted(layer.name()), layer.type(), depth, x, y, width, height]);
        await new Promise((resolve) => setImmediate(resolve));
    }
    const csv = rows.map((row) => row.join(',')).join('\n');
    log(csv);
    return csv;
}
