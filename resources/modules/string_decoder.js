module.exports = require('npm:string_decoder');
