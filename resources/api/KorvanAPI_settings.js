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

// As deep as values go to the application.
const DEEPEST_NESTING = 499;

const isPlain = (object) => [Object.prototype, null].includes(Object.getPrototypeOf(object));

/** Says where in a value something is that JSON cannot hold; undefined when there is nothing. */
function findInvalid(value, path, outer) {
    switch (typeof value) {
    case 'string': return value.isWellFormed() ? undefined : `${path} has half of a character in it`;
    case 'boolean': return undefined;
    case 'number': return Number.isFinite(value) ? undefined : `${path} is ${value}`;
    case 'object': return value === null ? undefined : findInvalidPart(value, path, outer);
    default: return `${path} is ${describe(value)}`;
    }
}

// `outer` are the objects around this one.
function findInvalidPart(object, path, outer) {
    if (outer.has(object))
        return `${path} is inside itself`;
    if (outer.size >= DEEPEST_NESTING)
        return `it is nested more than ${DEEPEST_NESTING} levels deep`;
    if (!Array.isArray(object) && !isPlain(object))
        return `${path} is ${wordsFor(object)}`;
    outer.add(object);
    const invalid = Array.isArray(object) ? findInvalidElement(object, path, outer) : findInvalidMember(object, path, outer);
    outer.delete(object);
    return invalid;
}

function findInvalidElement(array, path, outer) {
    for (let i = 0; i < array.length; ++i) {
        const part = `${path}[${i}]`;
        const invalid = i in array ? findInvalid(array[i], part, outer) : `${part} is a gap in the array`;
        if (invalid !== undefined)
            return invalid;
    }
    return undefined;
}

function findInvalidMember(object, path, outer) {
    for (const key of Object.keys(object)) {
        const invalid = key.isWellFormed() ? findInvalid(object[key], `${path}.${key}`, outer)
            : `a key in ${path} has half of a character in it`;
        if (invalid !== undefined)
            return invalid;
    }
    return undefined;
}

function checkKey(key) {
    if (checkText(key, 'The key of a setting') === '')
        throw new TypeError('The key of a setting cannot be empty.');
    if (!key.isWellFormed())
        throw new TypeError('The key of a setting has half of a character in it.');
    return key;
}

function checkValue(key, value) {
    if (value === undefined)
        throw new TypeError(`The setting "${key}" cannot be undefined. Use delete('${key}') to remove it.`);
    const invalid = findInvalid(value, key, new Set());
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
        if (typeof values !== 'object' || values === null || !isPlain(values)) {
            const given = typeof values !== 'object' || values === null || Array.isArray(values) ? describe(values)
                : wordsFor(values);
            throw new TypeError(`update() takes a plain object with the new values, but was given ${given}.`);
        }
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

// Scripts take functions out of modules: const { get, set } = require('korvan/settings').
for (const name of ['get', 'has', 'set', 'update', 'delete', 'clear', 'keys', 'all'])
    Object.defineProperty(settings, name, { value: settings[name].bind(settings) });

module.exports = settings;
