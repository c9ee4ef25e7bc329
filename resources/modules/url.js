const named = require('./support/names');
const { URL, URLSearchParams } = require('npm:whatwg-url');

module.exports = named({ URL, URLSearchParams });
