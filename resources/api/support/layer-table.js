// The values of all layers in a document or group, read at once.
'use strict';

// What has to be read for the key of a column that the application does not have.
const SOURCES = { selected: 'id', text: 'type' };

class LayerTable {
    #columns;
    #document;

    constructor(host, root, document, keys) {
        const asked = new Set(keys.flatMap((key) => (key in SOURCES ? [key, SOURCES[key]] : [key])));
        asked.delete('selected');
        this.#columns = host.layerValues(root, [...asked]);
        this.#document = document;
        /** The row of the group around each layer, or -1. */
        this.groups = numbersIn(this.#columns.groups);
        /** The first row of a layer inside; before it are a group itself and the groups around it. */
        this.first = this.#columns.first;
    }

    /** A function that tells of each row whether its layer's value passes a test. */
    filter(key, test) {
        if (key === 'selected') {
            const selected = new Set(this.#document?.selection().map((layer) => layer.id()));
            return this.filter('id', (id) => test(selected.has(id)));
        }
        if (key === 'text') {
            const isText = this.filter('type', (type) => type === 'text');
            const [passes, passesNone] = [this.#filter('text', (text) => test(text ?? '')), test(null)];
            return (row) => (isText(row) ? passes(row) : passesNone);
        }
        return this.#filter(key, test);
    }

    // Many layers have the same value: each is tested once.
    #filter(key, test) {
        const { values, places } = this.#columns[key];
        const passes = values.map(test);
        const numbers = numbersIn(places);
        return (row) => passes[numbers[row]];
    }
}

const numbersIn = (bytes) => new Int32Array(bytes.buffer, bytes.byteOffset, bytes.byteLength / 4);

module.exports = { LayerTable };
