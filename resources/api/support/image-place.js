// Where images are.
'use strict';

const { describe } = require('./describe.js');

/** The value, if an image can be there: a whole path or a URL. `what` is what the value is. */
function checkImagePlace(value, what) {
    if (typeof value !== 'string')
        throw new TypeError(`${what} is ${describe(value)}, but has to be the path or URL of an image.`);
    if (!/^(?:\/|file:|https?:|data:image\/)/.test(value)) {
        throw new TypeError(`${what} is ${describe(value)}, but has to be a whole path or a URL. That of an image in the `
            + "plug-in's Resources is context.plugin.urlForResourceNamed('NAME').");
    }
    return value;
}

module.exports = { checkImagePlace };
