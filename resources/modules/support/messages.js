// The Headers, Request and Response of fetch.
const { Headers, canBeField } = require('./headers');

const noBodyStatuses = [101, 103, 204, 205, 304];
const usualMethods = ['DELETE', 'GET', 'HEAD', 'OPTIONS', 'POST', 'PUT', 'PATCH'];

// What a script gives as a body, as bytes with the type that they have by themselves.
function bytesOf(body) {
    if (body instanceof ArrayBuffer)
        return { bytes: new Uint8Array(body.slice(0)), type: null };
    if (ArrayBuffer.isView(body))
        return { bytes: new Uint8Array(body.buffer, body.byteOffset, body.byteLength).slice(), type: null };
    const isForm = body instanceof URLSearchParams;
    const type = isForm ? 'application/x-www-form-urlencoded;charset=UTF-8' : 'text/plain;charset=UTF-8';
    return { bytes: new TextEncoder().encode(String(body)), type };
}

// What is for those that send or copy a body; no names that scripts meet.
const takeBytes = Symbol('take');
const copyBytes = Symbol('copy');

class Body {
    #bytes = null;
    #isUsed = false;

    constructor(body, headers) {
        if (body === null || body === undefined)
            return;
        const { bytes, type } = bytesOf(body);
        this.#bytes = bytes;
        if (type !== null && !headers.has('content-type'))
            headers.set('content-type', type);
    }

    get bodyUsed() { return this.#isUsed; }
    async text() { return new TextDecoder().decode(this.#read()); }
    async json() { return JSON.parse(new TextDecoder().decode(this.#read())); }
    async arrayBuffer() { return this.#read().buffer; }
    async bytes() { return this.#read(); }

    // Undefined when there is none.
    [takeBytes]() { return this.#bytes === null ? undefined : this.#read(); }
    [copyBytes]() {
        this.#requireUnused();
        return this.#bytes;
    }

    #requireUnused() {
        if (this.#isUsed)
            throw new TypeError('Body is unusable: Body has already been read');
    }
    #read() {
        this.#requireUnused();
        this.#isUsed = this.#bytes !== null;
        return this.#bytes === null ? new Uint8Array() : this.#bytes.slice();
    }
}

function parseURL(text) {
    try {
        return new URL(text).href;
    } catch (cause) {
        throw new TypeError(`Failed to parse URL from ${text}`, { cause });
    }
}

function methodOf(method) {
    const upper = method.toUpperCase();
    return usualMethods.includes(upper) && upper !== 'PATCH' ? upper : method;
}

function checkSignal(signal) {
    if (signal !== undefined && signal !== null && !(signal instanceof AbortSignal)) {
        throw new TypeError('The signal of a request has to be an AbortSignal, such as that of an AbortController.');
    }
    return signal;
}

class Request extends Body {
    #url;
    #signal;

    constructor(input, init) {
        const options = init ?? {};
        const source = input instanceof Request ? input : undefined;
        const url = source ? source.url : parseURL(String(input));
        if (new URL(url).username || new URL(url).password)
            throw new TypeError(`Request cannot be constructed from a URL that includes credentials: ${url}`);
        const headers = new Headers(options.headers ?? source?.headers);
        const method = methodOf(String(options.method ?? source?.method ?? 'GET'));
        const body = options.body ?? (source ? source[takeBytes]() : null) ?? null;
        if (body !== null && (method === 'GET' || method === 'HEAD'))
            throw new TypeError('Request with GET/HEAD method cannot have body.');
        super(body, headers);
        this.#url = url;
        this.#signal = checkSignal(options.signal) ?? source?.signal ?? undefined;
        Object.defineProperties(this, {
            method: { value: method, enumerable: true },
            headers: { value: headers, enumerable: true },
            redirect: { value: options.redirect ?? source?.redirect ?? 'follow', enumerable: true },
        });
        if (!['follow', 'error', 'manual'].includes(this.redirect))
            throw new TypeError(`Request cannot have the redirect mode "${this.redirect}". Use "follow", "error" or "manual".`);
    }

    get url() { return this.#url; }
    get signal() { return this.#signal ??= new AbortController().signal; }
    get [Symbol.toStringTag]() { return 'Request'; }

    clone() {
        return new Request(this.url, {
            method: this.method, headers: this.headers, redirect: this.redirect, signal: this.#signal,
            body: this[copyBytes](),
        });
    }
}

class Response extends Body {
    #facts = { url: '', redirected: false, type: 'default' };
    #status;

    constructor(body = null, options = {}) {
        const status = options.status ?? 200;
        if (!(status >= 200 && status <= 599))
            throw new RangeError('init["status"] must be in the range of 200 to 599, inclusive.');
        const isEmpty = body === null || body === undefined;
        if (!isEmpty && noBodyStatuses.includes(status))
            throw new TypeError('Response constructor: Invalid response status code ' + status);
        const headers = new Headers(options.headers);
        super(body, headers);
        this.#status = status;
        Object.defineProperties(this, {
            statusText: { value: String(options.statusText ?? ''), enumerable: true },
            headers: { value: headers, enumerable: true },
        });
    }

    get status() { return this.#facts.type === 'error' ? 0 : this.#status; }
    get ok() { return this.status >= 200 && this.status <= 299; }
    get url() { return this.#facts.url; }
    get redirected() { return this.#facts.redirected; }
    get type() { return this.#facts.type; }
    get [Symbol.toStringTag]() { return 'Response'; }

    clone() {
        const copy = new Response(this[copyBytes](), this);
        copy.#facts = this.#facts;
        return copy;
    }

    static error() {
        const response = new Response();
        response.#facts = { url: '', redirected: false, type: 'error' };
        return response;
    }
    static json(data, options = {}) {
        const text = JSON.stringify(data);
        if (text === undefined)
            throw new TypeError('Value is not JSON serializable');
        const headers = new Headers(options.headers);
        if (!headers.has('content-type'))
            headers.set('content-type', 'application/json');
        return new Response(text, { ...options, headers });
    }
    static redirect(url, status = 302) {
        if (![301, 302, 303, 307, 308].includes(status))
            throw new RangeError('Invalid status code ' + status);
        return new Response(null, { status, headers: { location: parseURL(String(url)) } });
    }

    // A response of a server, which has come from that place.
    static received(response, url, redirected) {
        response.#facts = { url, redirected, type: 'basic' };
        return response;
    }
}

const { received } = Response;
delete Response.received; // not for scripts

module.exports = {
    Headers, Request, Response, received,
    takeBody: (request) => request[takeBytes](),
    headersOf: (request) => [...request.headers],
    // Without those that no Headers can have: a script is not to fail for what a server adds.
    fieldsOfServer: (fields) => fields.filter(([name, value]) => canBeField(name, value)),
};
