// "korvan/settings": values that a plug-in keeps for itself, for good, and values that it keeps on layers and documents,
// where they are saved with the document. No other plug-in sees either.
'use strict';

const host = require('host:settings');
const { describe, checkText } = require('./support/describe.js');

function wordsFor(instance) {
    if (instance instanceof Date)
        return 'a Date (keep its toISOString())';
    return instance instanceof Promise ? describe(instance) : 'an instance of a class';
}

/** Says where in a value something is that JSON cannot hold; undefined when there is nothing. */
function findInvalid(value, path, outer) {
    switch (typeof value) {
    case 'string': case 'boolean': return undefined;
    case 'number': return Number.isFinite(value) ? undefined : `${path} is ${value}`;
    case 'object': break;
    default: return `${path} is ${describe(value)}`;
    }
    if (value === null)
        return undefined;
    if (outer.includes(value))
        return `${path} is inside itself`;
    const prototype = Object.getPrototypeOf(value);
    if (!Array.isArray(value) && prototype !== Object.prototype && prototype !== null)
        return `${path} is ${wordsFor(value)}`;
    for (const key of Object.keys(value)) {
        const part = Array.isArray(value) ? `${path}[${key}]` : `${path}.${key}`;
        const invalid = findInvalid(value[key], part, [...outer, value]);
        if (invalid !== undefined)
            return invalid;
    }
    return undefined;
}

function checkKey(key) {
    if (checkText(key, 'The key of a setting') === '')
        throw new TypeError('The key of a setting cannot be empty.');
    return key;
}

function checkValue(key, value) {
    if (value === undefined)
        throw new TypeError(`The setting "${key}" cannot be undefined. Use delete('${key}') to remove it.`);
    const invalid = findInvalid(value, key, []);
    if (invalid !== undefined) {
        throw new TypeError(`The setting "${key}" cannot be kept: ${invalid}. Settings are texts, numbers, booleans, `
            + 'null, and arrays and plain objects of them.');
    }
    return value;
}

/** Values under keys, like those of a Map. What is read is a copy. */
class Settings {
    #read;
    #write;

    constructor(read, write) {
        this.#read = read;
        this.#write = write;
    }

    /** The value, or `fallback` when there is none. */
    get(key, fallback = undefined) {
        const values = this.#read();
        return Object.hasOwn(values, checkKey(key)) ? values[key] : fallback;
    }

    has(key) { return Object.hasOwn(this.#read(), checkKey(key)); }
    set(key, value) { this.#write({ [checkKey(key)]: checkValue(key, value) }); }

    /** Sets all values of an object at once. */
    update(values) {
        if (typeof values !== 'object' || values === null || Array.isArray(values))
            throw new TypeError(`update() takes an object with the new values, but was given ${describe(values)}.`);
        for (const key of Object.keys(values))
            checkValue(checkKey(key), values[key]);
        this.#write(values);
    }

    /** Answers whether there was such a value. */
    delete(key) {
        const isThere = this.has(key);
        if (isThere)
            this.#write({ [key]: undefined });
        return isThere;
    }

    clear() { this.#write(Object.fromEntries(this.keys().map((key) => [key, undefined]))); }
    keys() { return Object.keys(this.#read()); }
    /** All values in a new object. */
    all() { return this.#read(); }
    get [Symbol.toStringTag]() { return 'Settings'; }
}

const settings = new Settings(() => host.values(), (changes) => { host.setValues(changes); });

/** The values that this plug-in keeps on a layer or a document. */
settings.of = function of(owner) {
    const object = owner?.hostObject ?? owner;
    if (typeof object !== 'object' || object === null || typeof object.userInfo !== 'function')
        throw new TypeError(`of() takes a layer or a document, but was given ${describe(owner)}.`);
    return new Settings(() => host.valuesOn(object), (changes) => {
        for (const key of Object.keys(changes))
            host.setValueOn(object, key, changes[key]);
    });
};

module.exports = settings;
