module.exports = require('npm:events');
