const named = require('./support/names');
const { TextEncoder, TextDecoder } = require('npm:@exodus/bytes/encoding-lite.js');

module.exports = named({ TextEncoder, TextDecoder });
