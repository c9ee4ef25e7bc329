const { pipeline } = require('stream').promises;
const { activeDocument } = require('korvan/dom');
const settings = require('korvan/settings');
const ui = require('korvan/ui');
const { CSVReader } = require('./csv');

const FRAME = ['x', 'y', 'width', 'height'];

/**
 * What is no part of a layer's frame is a key of its style. Fields without a value say nothing.
 * @param {Record<string, string>} fields
 * @returns {any} which the application checks
 */
function valuesOf({ type, name, text, ...others }) {
    const values = { type, name, frame: {}, style: {} };
    if (type === 'text')
        values.text = text ?? '';
    for (const [key, value] of Object.entries(others).filter(([, value]) => value)) {
        const part = FRAME.includes(key) ? values.frame : values.style;
        part[key] = Number.isNaN(Number(value)) ? value : Number(value);
    }
    return values;
}

// The first row names the columns. A row of a depth is in the latest group that is less deep.
async function importLayers(rows, document) {
    const layers = [];
    const parents = [document];
    let columns;
    for await (const row of rows) {
        if (columns === undefined) {
            columns = row;
            continue;
        }
        const { depth = 0, ...fields } = Object.fromEntries(columns.map((column, index) => [column, row[index]]));
        const layer = parents[depth].create(valuesOf(fields));
        parents[Number(depth) + 1] = layer;
        layers.push(layer);
    }
    return layers;
}

/**
 * The host may give an address: korvan-plugins run … --context '{"url": "https://example.com/layers.csv"}'
 * @param {Korvan.Context<{ url?: string }>} context
 */
async function onRun(context) {
    const url = context.url ?? await ui.askText({ title: 'Where is the list?', value: settings.get('url', 'https://') });
    if (url === null)
        return 0;
    const response = await fetch(url);
    if (!response.ok)
        throw new Error(`${url} cannot be read. The server has answered ${response.status}.`);
    settings.set('url', url);

    const document = activeDocument();
    const layers = await pipeline([await response.bytes()], new CSVReader(), (rows) => importLayers(rows, document));
    document.selection = layers;
    ui.message(`${layers.length} layers imported`);
    return layers.length;
}
