module.exports = require('npm:readable-stream');
