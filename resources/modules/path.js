module.exports = require('npm:path-browserify');
