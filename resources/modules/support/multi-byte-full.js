module.exports = require('npm:@exodus/bytes/multi-byte.js');
