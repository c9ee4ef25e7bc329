module.exports = require('npm:node-inspect-extracted');
