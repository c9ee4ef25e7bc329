const util = require('npm:util');
const { inspect, format, formatWithOptions, stripVTControlCharacters } = require('npm:node-inspect-extracted');
module.exports = { ...util, inspect, format, formatWithOptions, stripVTControlCharacters };
