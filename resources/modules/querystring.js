module.exports = require('npm:querystring');
