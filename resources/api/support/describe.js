// What the modules say about values in their errors.
'use strict';

/** A text, cut off after so many characters. */
const shortened = (text, length) => (text.length <= length ? text : `${text.slice(0, length)}…`);

/** A value in a few words: "the text \"abc\"", "an array", "nothing (undefined)". */
function describe(value) {
    switch (typeof value) {
    case 'undefined': return 'nothing (undefined)';
    case 'string': return `the text "${shortened(value, 40)}"`;
    case 'number': return `the number ${value}`;
    case 'boolean': return String(value);
    case 'function': return 'a function';
    case 'object':
        if (value === null)
            return 'null';
        if (Array.isArray(value))
            return 'an array';
        return value instanceof Date ? 'a Date' : value instanceof Promise ? 'a promise (await it first)' : 'an object';
    default: return `a ${typeof value}`;
    }
}

function article(noun) {
    return `${/^[aeiou]/.test(noun) ? 'an' : 'a'} ${noun}`;
}

// How many letters have to be changed, added or taken away to come from one word to the other.
function distance(from, to) {
    let row = Array.from({ length: to.length + 1 }, (_, i) => i);
    for (let i = 1; i <= from.length; ++i) {
        const next = [i];
        for (let j = 1; j <= to.length; ++j)
            next.push(Math.min(row[j] + 1, next[j - 1] + 1, row[j - 1] + (from[i - 1] === to[j - 1] ? 0 : 1)));
        row = next;
    }
    return row[to.length];
}

/** " Did you mean \"fill\"?" for a word that is the beginning of one of the known ones, or nearly one, else "". */
function suggestion(word, known) {
    const text = String(word).toLowerCase();
    const begun = known.find((name) => text !== '' && name.toLowerCase().startsWith(text));
    if (begun !== undefined)
        return ` Did you mean "${begun}"?`;
    if (text.length < 2)
        return '';
    const nearest = known.map((name) => [distance(text, name.toLowerCase()), name]).sort((a, b) => a[0] - b[0])[0];
    return nearest !== undefined && nearest[0] <= Math.ceil(text.length / 3) ? ` Did you mean "${nearest[1]}"?` : '';
}

/** Throws when an options object has keys that mean nothing: most of them are misspelt. */
function checkKeys(options, known, where) {
    if (typeof options !== 'object' || options === null || Array.isArray(options))
        throw new TypeError(`${where} takes an object with its options, but was given ${describe(options)}.`);
    for (const key of Object.keys(options)) {
        if (!known.includes(key)) {
            throw new TypeError(
                `${where} knows no option "${key}".${suggestion(key, known)} It knows: ${known.join(', ')}.`);
        }
    }
}

/** The value, if it is a text; an error that names it, if not. */
function checkText(value, what) {
    if (typeof value !== 'string')
        throw new TypeError(`${what} has to be a text, but is ${describe(value)}.`);
    return value;
}

/** The value, if it is a number that is none of NaN and the infinities; an error that names it, if not. */
function checkNumber(value, what) {
    if (typeof value !== 'number' || !Number.isFinite(value))
        throw new TypeError(`${what} has to be a number, but is ${describe(value)}.`);
    return value;
}

/** The value, if it is a function; an error that names it, if not. */
function checkFunction(value, what) {
    if (typeof value !== 'function')
        throw new TypeError(`${what} has to be a function, but is ${describe(value)}.`);
    return value;
}

module.exports = { describe, shortened, article, suggestion, checkKeys, checkText, checkNumber, checkFunction };
