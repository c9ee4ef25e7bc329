const { parse, stringify } = require('npm:fast-querystring');
const { coded } = require('./support/codes');
const general = require('npm:querystring');

// One package is as node is, but knows no separators other than "&" and "="; another knows those.
function parseQuery(text, separator, equals, options) {
    const isUsual = (!separator || separator === '&') && (!equals || equals === '=');
    if (isUsual && !options)
        return parse(text);
    return Object.assign(Object.create(null), general.parse(text, separator || '&', equals || '=', options));
}

function stringifyQuery(values, separator, equals) {
    const isUsual = (!separator || separator === '&') && (!equals || equals === '=');
    return isUsual ? stringify(values) : general.stringify(values, separator, equals);
}

function unescape(text) {
    try {
        return decodeURIComponent(text);
    } catch {
        return text;
    }
}

const escaping = { escape: (text) => encodeURIComponent(text) };
coded(escaping, ['escape'], { TypeError: undefined });

module.exports = {
    parse: parseQuery, decode: parseQuery,
    stringify: stringifyQuery, encode: stringifyQuery,
    escape: escaping.escape, unescape,
};
