const named = require('./support/names');
const { codedClass } = require('./support/codes');
const { inspectable, inspectableAs } = require('./support/inspectable');
const { URL: Plain, URLSearchParams } = require('npm:whatwg-url');

const URL = codedClass(Plain, { TypeError: 'ERR_INVALID_URL' });
inspectable(Plain, ['href', 'origin', 'protocol', 'username', 'password', 'host', 'hostname', 'port', 'pathname', 'search',
    'searchParams', 'hash']);
inspectableAs(URLSearchParams, (parameters, inspect) => {
    const pairs = [...parameters].map(([name, value]) => `${inspect(name)} => ${inspect(value)}`);
    return pairs.length === 0 ? '{}' : `{ ${pairs.join(', ')} }`;
});

module.exports = named({ URL, URLSearchParams });
