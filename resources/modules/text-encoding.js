const { TextEncoder, TextDecoder } = require('npm:@exodus/bytes/encoding-lite.js');
module.exports = { TextEncoder, TextDecoder };
