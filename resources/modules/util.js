const util = require('npm:util');
const { inspect, format, formatWithOptions, stripVTControlCharacters } = require('npm:node-inspect-extracted');

const custom = Symbol.for('nodejs.util.promisify.custom');

function promisify(original) {
    const own = typeof original === 'function' ? original[custom] : undefined;
    return typeof own === 'function' ? own : util.promisify(original);
}
promisify.custom = custom;

module.exports = {
    ...util, inspect, format, formatWithOptions, stripVTControlCharacters, promisify,
    get isDeepStrictEqual() { return require('npm:assert/build/internal/util/comparisons').isDeepStrictEqual; },
    toUSVString: (text) => String(text).toWellFormed(),
    get TextEncoder() { return TextEncoder; },
    get TextDecoder() { return TextDecoder; },
};
