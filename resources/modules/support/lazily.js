// Properties of `target` that `load(name)` gives when one of them is first asked for. Loading may also assign them.
module.exports = function (target, names, load) {
    for (const name of names) {
        const settle = (value) => {
            Object.defineProperty(target, name, { value, writable: true, configurable: true, enumerable: true });
            return value;
        };
        Object.defineProperty(target, name, { get: () => settle(load(name)), set: settle, configurable: true, enumerable: true });
    }
};
