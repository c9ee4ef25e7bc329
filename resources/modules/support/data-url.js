// What a URL has in itself: data:image/png;base64,… Undefined for one that is wrong.
const percentDecoded = (text) => {
    const bytes = new TextEncoder().encode(text);
    const decoded = [];
    for (let at = 0; at < bytes.length; ++at) {
        const code = bytes[at] === 0x25 ? String.fromCharCode(...bytes.subarray(at + 1, at + 3)) : '';
        const isEscape = /^[0-9a-f]{2}$/i.test(code);
        decoded.push(isEscape ? parseInt(code, 16) : bytes[at]);
        at += isEscape ? 2 : 0;
    }
    return Uint8Array.from(decoded);
};

function bytesOfBase64(bytes) {
    try {
        return Uint8Array.from(atob(String.fromCharCode(...bytes)), (letter) => letter.charCodeAt(0));
    } catch {
        return undefined;
    }
}

module.exports = function (url) {
    const [, given, data] = /^data:([^,]*),(.*)$/s.exec(url.replace(/#.*$/s, '')) ?? [];
    if (given === undefined)
        return undefined;
    const isBase64 = /;\s*base64\s*$/i.test(given);
    const type = given.trim().replace(/;\s*base64\s*$/i, '');
    const bytes = isBase64 ? bytesOfBase64(percentDecoded(data)) : percentDecoded(data);
    const isType = /^[^\s/;]+\/[^\s/;]+(;|$)/.test(type) || type.startsWith(';');
    const complete = type.startsWith(';') ? `text/plain${type}` : type;
    return bytes && { bytes, type: isType ? complete : 'text/plain;charset=US-ASCII' };
};
