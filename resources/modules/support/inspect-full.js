const named = require('./names');
const full = require('npm:node-inspect-extracted');

named({ inspect: full.inspect, stripVTControlCharacters: full.stripVTControlCharacters });

module.exports = full;
