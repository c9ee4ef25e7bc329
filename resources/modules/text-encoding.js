const named = require('./support/names');
const { inspectable } = require('./support/inspectable');
const { TextEncoder, TextDecoder, setMultibyte } = require('npm:@exodus/bytes/fallback/encoding.js');

// The tables of East Asia are many times as large as all the rest, and few scripts read them.
setMultibyte((encoding, isLoose) => require('./multi-byte-full').createMultibyteDecoder(encoding, isLoose));

inspectable(TextEncoder, ['encoding']);
inspectable(TextDecoder, ['encoding', 'fatal', 'ignoreBOM']);

module.exports = named({ TextEncoder, TextDecoder });
