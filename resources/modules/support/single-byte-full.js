module.exports = require('npm:@exodus/bytes/single-byte.js');
