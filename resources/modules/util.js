// Node's "util". What it consists of is loaded when it is first asked for: most scripts want one function of it.
const { checkType } = require('./support/arguments');
const lazily = require('./support/lazily');

const custom = Symbol.for('nodejs.util.promisify.custom');
const parts = {
    './util-full': ['_extend', 'callbackify', 'debug', 'debuglog', 'deprecate', 'inherits', 'isArray', 'isBoolean', 'isBuffer',
        'isDate', 'isError', 'isFunction', 'isNull', 'isNullOrUndefined', 'isNumber', 'isObject', 'isPrimitive', 'isRegExp',
        'isString', 'isSymbol', 'isUndefined', 'log', 'types'],
    './inspect-full': ['format', 'formatWithOptions', 'inspect', 'stripVTControlCharacters'],
    './comparisons-full': ['isDeepStrictEqual'],
};
const load = {
    './util-full': () => require('./util-full'),
    './inspect-full': () => require('./inspect-full'),
    './comparisons-full': () => require('./comparisons-full'),
};

function promisify(original) {
    checkType(original, 'original', 'function');
    const own = original[custom];
    return typeof own === 'function' ? own : require('./util-full').promisify(original);
}
promisify.custom = custom;

module.exports = {
    promisify,
    toUSVString: (text) => String(text).toWellFormed(),
    get TextEncoder() { return TextEncoder; },
    get TextDecoder() { return TextDecoder; },
};
for (const [part, names] of Object.entries(parts))
    lazily(module.exports, names, (name) => load[part]()[name]);
