const { EOL } = require('os');
const { Readable, Transform } = require('stream');
const { pipeline } = require('stream').promises;
const { layersWithDepth } = require('../layers');

const quoted = (text) => `"${String(text).replaceAll('"', '""')}"`;

/** @param {Korvan.Document} document */
function* rowsOf(document) {
    yield ['name', 'type', 'depth', 'x', 'y', 'width', 'height'];
    for (const { layer, depth } of layersWithDepth(document)) {
        const { x, y, width, height } = layer.frame();
        yield [quoted(layer.name()), layer.type(), depth, x, y, width, height];
    }
}

const toLines = () => new Transform({
    objectMode: true,
    transform: (row, encoding, done) => done(null, row.join(',') + EOL),
});

/**
 * A promise keeps the command running until it settles, and its value is what the command returns.
 * @param {Korvan.Context} context
 */
async function onRun(context) {
    const lines = await pipeline(Readable.from(rowsOf(context.document)), toLines(), (all) => all.toArray());
    const csv = lines.join('');
    log(csv);
    return csv;
}
