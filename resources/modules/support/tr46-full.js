module.exports = require('npm:tr46');
