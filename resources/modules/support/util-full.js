const { checkType } = require('./arguments');
const util = require('npm:util');
const { callbackify, inherits, debuglog } = util;

// With what node's functions refuse and the package's take.
module.exports = {
    ...util,
    callbackify(original) {
        checkType(original, 'original', 'function');
        return callbackify(original);
    },
    inherits(constructor, base) {
        checkType(constructor, 'ctor', 'function');
        if (base === null || base === undefined)
            checkType(base, 'superCtor', 'function');
        checkType(base.prototype, 'superCtor.prototype', 'object');
        inherits(constructor, base);
    },
    debuglog: (section) => Object.assign(debuglog(section), { enabled: false }),
};
