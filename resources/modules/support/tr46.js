// Domain names for the package whatwg-url. Those that are plain ASCII are their own ASCII form in lower case; only others
// need the tables, which are three quarters of the whole and take their time to load.
const hasTables = (domain) => /[^\0-\x7f]|(^|\.)xn--/i.test(domain);

exports.toASCII = (domain, options) =>
    (hasTables(domain) ? require('./tr46-full').toASCII(domain, options) : domain.toLowerCase());
exports.toUnicode = (domain, options) => require('./tr46-full').toUnicode(domain, options);
