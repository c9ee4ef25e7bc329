module.exports = require('npm:util');
