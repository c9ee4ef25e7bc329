// The package's encodings of one byte for a letter: their tables are loaded when one of them is first asked for.
exports.createSinglebyteDecoder = (encoding, isLoose) => require('./single-byte-full').createSinglebyteDecoder(encoding, isLoose);
exports.latin1toString = (bytes) => require('./single-byte-full').latin1toString(bytes);
exports.latin1fromString = (text) => require('./single-byte-full').latin1fromString(text);
