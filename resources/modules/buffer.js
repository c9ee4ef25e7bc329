module.exports = require('npm:buffer');
