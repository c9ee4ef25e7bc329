// Objects that do not take what they have no place for.
'use strict';

const { suggestion } = require('./describe.js');

const accessorsOf = (prototype) => Object.entries(Object.getOwnPropertyDescriptors(prototype))
    .filter(([, { get }]) => get !== undefined);

/**
 * Makes assignments to unknown and to read-only properties of a class's objects an error, in scripts of either mode.
 * `noun` is what the objects are called; `advice` is told for unknown names. Symbols are let through. Only assignments
 * that no property of the class takes cost anything.
 */
function refuseUnknownNames(Class, noun, advice = '') {
    const { prototype } = Class;
    const writable = accessorsOf(prototype).filter(([, { set }]) => set !== undefined).map(([name]) => name);
    for (const [name, accessor] of accessorsOf(prototype)) {
        if (accessor.set !== undefined)
            continue;
        accessor.set = function () {
            throw new TypeError(
                `The "${name}" of a ${noun} cannot be assigned to. What can be: ${writable.join(', ')}.`);
        };
        Object.defineProperty(prototype, name, accessor);
    }
    Object.setPrototypeOf(prototype, new Proxy({}, {
        set(target, key, value, receiver) {
            if (typeof key === 'symbol')
                return Reflect.set(target, key, value, receiver);
            throw new TypeError(`A ${noun} has no "${key}".${suggestion(key, writable)} What can be assigned to: `
                + `${writable.join(', ')}.${advice}`);
        },
    }));
}

module.exports = { refuseUnknownNames };
