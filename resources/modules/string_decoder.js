const { Buffer } = require('buffer');
const { StringDecoder: Original } = require('npm:string_decoder');

const withURLLetters = (text) => text.replace(/\+/g, '-').replace(/\//g, '_').replace(/=+$/, '');

// What node's StringDecoder has learnt since the package was written: the encoding "base64url", and an error with a code.
function StringDecoder(encoding) {
    const name = encoding ? String(encoding).toLowerCase() : 'utf8';
    if (!Buffer.isEncoding(name))
        throw Object.assign(new TypeError(`Unknown encoding: ${encoding}`), { code: 'ERR_UNKNOWN_ENCODING' });
    const isBase64URL = name === 'base64url';
    Original.call(this, isBase64URL ? 'base64' : name);
    if (isBase64URL) {
        const { write, end } = this;
        this.encoding = name;
        this.write = (bytes) => withURLLetters(write.call(this, bytes));
        this.end = (bytes) => withURLLetters(end.call(this, bytes));
    }
}
StringDecoder.prototype = Original.prototype;
StringDecoder.prototype.constructor = StringDecoder;

module.exports = { StringDecoder };
