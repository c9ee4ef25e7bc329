// What util.inspect shows of objects whose values are no properties of theirs.
const custom = Symbol.for('nodejs.util.inspect.custom');

/** Shows objects of a class as its name with `textOf(object, inspect)` behind it. */
function inspectableAs(Class, textOf) {
    Object.defineProperty(Class.prototype, custom, {
        value(depth, options, inspect = require('util').inspect) {
            const name = this.constructor?.name ?? Class.name;
            if (typeof depth === 'number' && depth < 0)
                return `[${name}]`;
            return name + ' ' + textOf(this, (value) => inspect(value, { ...options, depth }));
        },
        writable: true,
        configurable: true,
    });
}

/** Shows objects of a class with the values of those properties. */
function inspectable(Class, keys) {
    inspectableAs(Class,
        (object, inspect) => inspect(Object.fromEntries(keys.map((key) => [key, object[key]]))));
}

module.exports = { inspectable, inspectableAs, custom };
