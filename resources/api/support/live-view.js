// Objects whose properties are those of something else at any moment.
'use strict';

/**
 * A view of what `read()` answers. Assigning to a property calls `write(key, value)`, deleting one `remove(key)`; both
 * throw what is wrong.
 */
function liveView(read, write, remove) {
    const target = {};
    const refreshed = () => {
        const current = read();
        for (const key of Object.keys(target)) {
            if (!Object.hasOwn(current, key))
                delete target[key];
        }
        return Object.assign(target, current);
    };
    return new Proxy(target, {
        get: (_, key) => Reflect.get(refreshed(), key),
        has: (_, key) => Reflect.has(refreshed(), key),
        ownKeys: () => Reflect.ownKeys(refreshed()),
        getOwnPropertyDescriptor: (_, key) => Reflect.getOwnPropertyDescriptor(refreshed(), key),
        set(_, key, value) {
            write(String(key), value);
            return true;
        },
        deleteProperty(_, key) {
            remove(String(key));
            return true;
        },
        defineProperty: () => false,
        setPrototypeOf: () => false,
        preventExtensions: () => false,
    });
}

module.exports = { liveView };
