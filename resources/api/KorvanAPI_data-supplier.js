// "korvan/data-supplier": offers texts and images that the application puts into layers.
//
// For plug-ins whose manifest says "suppliesData". A command registers its suppliers, usually when the application starts
// (the action "Startup"), and keeps running for them until they are unregistered.
'use strict';

const host = require('host:data-supplier');
const { describe, checkKeys, checkText, checkFunction } = require('./support/describe.js');
const { checkImagePlace } = require('./support/image-place.js');

const KINDS = ['text', 'image'];

function textOf(value, where) {
    switch (typeof value) {
    case 'string': return value;
    case 'number': case 'boolean': return String(value);
    default: throw new TypeError(`${where} is ${describe(value)}, but has to be a text or a number.`);
    }
}

// What is told of an error, which may be anything that was thrown.
function textOfError(error) {
    try {
        return error instanceof Error ? `${error.name}: ${error.message}` : String(error);
    } catch {
        return 'it has thrown something that is no error and has no text.';
    }
}

/** One value, or null, for each layer, from what a supplier has answered. The host names it before what is wrong. */
function valuesFor(layers, answer, kind) {
    const convert = kind === 'text' ? textOf : checkImagePlace;
    const named = (value, what) => (value === null || value === undefined ? null
        : convert(value, `The ${what} that it has answered`));
    if (Array.isArray(answer)) {
        if (answer.length > layers.length) {
            throw new RangeError(`It has answered ${answer.length} values for ${layers.length} layers.`);
        }
        return layers.map((_, index) => named(answer[index], `value ${index}`));
    }
    const entries = answer instanceof Map ? [...answer]
        : typeof answer === 'object' && answer !== null ? Object.entries(answer) : undefined;
    if (entries === undefined) {
        throw new TypeError(`It has to answer an array with a value for each layer, or an object `
            + `with values under the layers' ids, but has answered ${describe(answer)}.`);
    }
    const byID = new Map(entries.map(([key, value]) => [typeof key === 'string' ? key : key?.id, value]));
    return layers.map((layer) => named(byID.get(layer.id), `value for "${layer.id}"`));
}

/**
 * Offers values to the application: a `name` for the user, a `kind` ("text" or "image"), and a function `supply` that
 * answers the values, or a promise of them, for `{ layers, count }`. The `id`, the name by default, tells the suppliers of
 * a plug-in apart; registering one again replaces it.
 */
function register(options) {
    checkKeys(options, ['id', 'name', 'kind', 'supply'], 'register()');
    const name = checkText(options.name, 'The name of a supplier');
    const id = options.id === undefined ? name : checkText(options.id, 'The id of a supplier');
    const { kind } = options;
    if (!KINDS.includes(kind))
        throw new TypeError(`The kind of a supplier has to be "text" or "image", but is ${describe(kind)}.`);
    const supply = checkFunction(options.supply, 'The supply of a supplier');
    host.register(id, name, kind, async (objects, answer) => {
        try {
            const { from } = require('korvan/dom');
            const layers = Object.freeze(objects.map(from));
            answer(valuesFor(layers, await supply({ layers, count: layers.length }), kind), null);
        } catch (error) {
            answer(null, textOfError(error));
        }
    });
}

module.exports = {
    register,

    /** Takes an offer back. Answers whether there was one of that id. */
    unregister: (id) => host.unregister(checkText(id, 'The id of a supplier')),
};
