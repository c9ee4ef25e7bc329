const path = require('npm:path-browserify');
const { coded } = require('./support/codes');
const { format } = path;

// What node's "path" has learnt since the package was written.
path.format = function (parts) {
    if (parts && !parts.base && parts.ext && !parts.ext.startsWith('.'))
        return format({ ...parts, ext: `.${parts.ext}` });
    return format(parts);
};
path.toNamespacedPath = (name) => name;

coded(path, ['basename', 'dirname', 'extname', 'format', 'isAbsolute', 'join', 'normalize', 'parse', 'relative', 'resolve']);

module.exports = path;
