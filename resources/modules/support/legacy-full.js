module.exports = require('npm:readable-stream/lib/internal/streams/legacy.js');
