module.exports = require('npm:readable-stream/lib/stream.js');
