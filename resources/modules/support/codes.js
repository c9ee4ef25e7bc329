// Gives the errors of packages the codes that node's have.
const named = require('./names');

const usualCodes = { TypeError: 'ERR_INVALID_ARG_TYPE', RangeError: 'ERR_OUT_OF_RANGE', URIError: 'ERR_INVALID_URI' };

function addCode(error, codes) {
    const isEncoding = /^Unknown encoding/.test(error?.message);
    const code = isEncoding ? 'ERR_UNKNOWN_ENCODING' : codes[error?.name];
    if (code !== undefined && error.code === undefined)
        error.code = code;
    return error;
}

/** Has those functions of an object give codes, by the names of errors. */
function coded(object, names, codes = {}) {
    const all = { ...usualCodes, ...codes };
    for (const name of names) {
        const original = object[name];
        object[name] = function (...values) {
            try {
                return original.apply(this, values);
            } catch (error) {
                throw addCode(error, all);
            }
        };
        named({ [name]: object[name] });
    }
}

/** A class whose constructor gives codes. */
function codedClass(Class, codes) {
    const result = new Proxy(Class, {
        construct(target, values, maker) {
            try {
                return Reflect.construct(target, values, maker);
            } catch (error) {
                throw addCode(error, codes);
            }
        },
    });
    Object.defineProperty(Class.prototype, 'constructor', { value: result });
    return result;
}

module.exports = { coded, codedClass };
