const { URL, URLSearchParams } = require('npm:whatwg-url');
module.exports = { URL, URLSearchParams };
