const named = require('./support/names');
const { checkType } = require('./support/arguments');
const { coded } = require('./support/codes');
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

// The package finds nothing where nothing is looked for; in node that is everywhere.
for (const [name, isForwards] of [['indexOf', true], ['lastIndexOf', false]]) {
    const search = Buffer.prototype[name];
    Buffer.prototype[name] = function (value, offset, encoding) {
        if (value?.length !== 0)
            return search.call(this, value, offset, encoding);
        const from = Number(typeof offset === 'string' ? undefined : offset);
        const start = Number.isNaN(from) ? (isForwards ? 0 : this.length) : Math.trunc(from);
        return Math.min(Math.max(start < 0 ? start + this.length : start, 0), this.length);
    };
}

// A place that is no whole number is an error, as in node.
function checkPlace(value, name) {
    if (value === undefined)
        return;
    checkType(value, name, 'number');
    if (!Number.isInteger(value)) {
        const error = new RangeError(`The value of "${name}" is out of range. It must be an integer. Received ${value}`);
        throw Object.assign(error, { code: 'ERR_OUT_OF_RANGE' });
    }
}
const isNumeric = (name) => /^(?:read|write)(?:Big)?(?:U?[iI]nt|Float|Double)/.test(name);
for (const name of Object.keys(Buffer.prototype).filter(isNumeric)) {
    const original = Buffer.prototype[name];
    const places = name.startsWith('read') ? 0 : 1; // before them is the value
    Buffer.prototype[name] = function (...values) {
        checkPlace(values[places], 'offset');
        checkPlace(values[places + 1], 'byteLength');
        return original.apply(this, values);
    };
}
for (const name of ['readBigUInt64LE', 'readBigUInt64BE', 'writeBigUInt64LE', 'writeBigUInt64BE'])
    Buffer.prototype[name.replace('UInt', 'Uint')] = Buffer.prototype[name];

// The package's errors have no codes.
coded(Buffer, ['alloc', 'allocUnsafe', 'allocUnsafeSlow', 'byteLength', 'compare', 'concat', 'from']);
coded(Buffer.prototype, ['compare', 'equals', 'fill', 'toString', ...Object.keys(Buffer.prototype).filter(isNumeric)]);
coded(Buffer.prototype, ['swap16', 'swap32', 'swap64'], { RangeError: 'ERR_INVALID_BUFFER_SIZE' });

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
