const named = require('./support/names');
const buffer = require('npm:buffer');
const { Buffer } = buffer;

// What node's Buffer has learnt since the package was written: the encoding "base64url", and one replacement character for
// each broken sequence of UTF-8, as the decoder of the web has it.
const isBase64URL = (encoding) => typeof encoding === 'string' && encoding.toLowerCase() === 'base64url';
const isUTF8 = (encoding) => encoding === undefined || encoding === null || /^utf-?8$/i.test(encoding);
const { from, isEncoding, byteLength } = Buffer;
const { toString } = Buffer.prototype;

named({ Buffer });
Buffer.from = function (value, encoding, length) {
    return from(value, isBase64URL(encoding) ? 'base64' : encoding, length);
};
Buffer.isEncoding = (encoding) => isBase64URL(encoding) || isEncoding(encoding);
Buffer.byteLength = (value, encoding) => byteLength(value, isBase64URL(encoding) ? 'base64' : encoding);
Buffer.prototype.toString = function (encoding, start, end) {
    if (isBase64URL(encoding))
        return toString.call(this, 'base64', start, end).replace(/\+/g, '-').replace(/\//g, '_').replace(/=+$/, '');
    const text = toString.call(this, encoding, start, end);
    if (!isUTF8(encoding) || !text.includes('\ufffd'))
        return text;
    const from = Math.max(0, start | 0);
    const to = end === undefined ? this.length : Math.max(from, end | 0);
    return new TextDecoder('utf-8', { ignoreBOM: true }).decode(new Uint8Array(this).subarray(from, to));
};

const constants = { MAX_LENGTH: buffer.kMaxLength, MAX_STRING_LENGTH: 0x3fffffff };

function isUtf8(bytes) {
    try {
        new TextDecoder('utf-8', { fatal: true }).decode(bytes);
        return true;
    } catch {
        return false;
    }
}

module.exports = {
    ...buffer,
    constants,
    isUtf8,
    isAscii: (bytes) => new Uint8Array(bytes.buffer ?? bytes, bytes.byteOffset, bytes.byteLength).every((byte) => byte < 128),
    get atob() { return atob; },
    get btoa() { return btoa; },
};
