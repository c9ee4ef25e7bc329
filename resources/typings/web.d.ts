// The globals that web pages have too.

interface EventInit {
    bubbles?: boolean;
    cancelable?: boolean;
    composed?: boolean;
}
declare class Event {
    constructor(type: string, options?: EventInit);
    static readonly NONE: 0;
    static readonly CAPTURING_PHASE: 1;
    static readonly AT_TARGET: 2;
    static readonly BUBBLING_PHASE: 3;
    readonly NONE: 0;
    readonly CAPTURING_PHASE: 1;
    readonly AT_TARGET: 2;
    readonly BUBBLING_PHASE: 3;
    readonly type: string;
    readonly target: EventTarget | null;
    readonly currentTarget: EventTarget | null;
    readonly eventPhase: number;
    readonly bubbles: boolean;
    readonly cancelable: boolean;
    readonly composed: boolean;
    readonly defaultPrevented: boolean;
    readonly isTrusted: boolean;
    readonly timeStamp: number;
    composedPath(): EventTarget[];
    preventDefault(): void;
    stopPropagation(): void;
    stopImmediatePropagation(): void;
    /** @deprecated */ readonly srcElement: EventTarget | null;
    /** @deprecated */ cancelBubble: boolean;
    /** @deprecated */ returnValue: boolean;
    /** @deprecated */ initEvent(type: string, bubbles?: boolean, cancelable?: boolean): void;
}

type EventListener = ((event: Event) => void) | { handleEvent(event: Event): void };
interface EventListenerOptions {
    capture?: boolean;
    once?: boolean;
    passive?: boolean;
    signal?: AbortSignal;
}
declare class EventTarget {
    addEventListener(type: string, listener: EventListener | null, options?: boolean | EventListenerOptions): void;
    removeEventListener(type: string, listener: EventListener | null, options?: boolean | EventListenerOptions): void;
    /** Whether nobody has prevented its default. */
    dispatchEvent(event: Event): boolean;
}

declare class AbortSignal extends EventTarget {
    private constructor();
    static abort(reason?: unknown): AbortSignal;
    static timeout(milliseconds: number): AbortSignal;
    static any(signals: Iterable<AbortSignal>): AbortSignal;
    readonly aborted: boolean;
    readonly reason: any;
    onabort: ((event: Event) => void) | null;
    throwIfAborted(): void;
}
declare class AbortController {
    readonly signal: AbortSignal;
    abort(reason?: unknown): void;
}

interface DOMExceptionCodes {
    readonly INDEX_SIZE_ERR: number;
    readonly HIERARCHY_REQUEST_ERR: number;
    readonly WRONG_DOCUMENT_ERR: number;
    readonly INVALID_CHARACTER_ERR: number;
    readonly NO_MODIFICATION_ALLOWED_ERR: number;
    readonly NOT_FOUND_ERR: number;
    readonly NOT_SUPPORTED_ERR: number;
    readonly IN_USE_ATTRIBUTE_ERR: number;
    readonly INVALID_STATE_ERR: number;
    readonly SYNTAX_ERR: number;
    readonly INVALID_MODIFICATION_ERR: number;
    readonly NAMESPACE_ERR: number;
    readonly INVALID_ACCESS_ERR: number;
    readonly TYPE_MISMATCH_ERR: number;
    readonly SECURITY_ERR: number;
    readonly NETWORK_ERR: number;
    readonly ABORT_ERR: number;
    readonly URLMISMATCH_ERR: number;
    readonly QUOTA_EXCEEDED_ERR: number;
    readonly TIMEOUT_ERR: number;
    readonly INVALID_NODE_TYPE_ERR: number;
    readonly DATA_CLONE_ERR: number;
}
interface DOMException extends Error, DOMExceptionCodes {
    readonly code: number;
}
declare var DOMException: DOMExceptionCodes & {
    new (message?: string, options?: string | { name?: string; cause?: unknown }): DOMException;
    readonly prototype: DOMException;
};

type HeadersInit = Headers | Record<string, string> | Iterable<readonly [string, string]>;
declare class Headers {
    constructor(fields?: HeadersInit);
    append(name: string, value: string): void;
    delete(name: string): void;
    get(name: string): string | null;
    getSetCookie(): string[];
    has(name: string): boolean;
    set(name: string, value: string): void;
    forEach(callback: (value: string, name: string, headers: Headers) => void, thisArgument?: unknown): void;
    entries(): IterableIterator<[string, string]>;
    keys(): IterableIterator<string>;
    values(): IterableIterator<string>;
    [Symbol.iterator](): IterableIterator<[string, string]>;
}

type BodyInit = string | ArrayBuffer | ArrayBufferView | URLSearchParams;
interface RequestInit {
    method?: string;
    headers?: HeadersInit;
    body?: BodyInit | null;
    redirect?: 'follow' | 'error' | 'manual';
    signal?: AbortSignal | null;
}
/** The content of a request or an answer, which can be read once. It is held in memory: there are no streams. */
interface Body {
    readonly bodyUsed: boolean;
    text(): Promise<string>;
    json(): Promise<any>;
    arrayBuffer(): Promise<ArrayBuffer>;
    bytes(): Promise<Uint8Array>;
}
interface Request extends Body {
    readonly url: string;
    readonly method: string;
    readonly headers: Headers;
    readonly redirect: 'follow' | 'error' | 'manual';
    readonly signal: AbortSignal;
    clone(): Request;
}
declare var Request: {
    new (input: string | URL | Request, options?: RequestInit): Request;
    readonly prototype: Request;
};

interface ResponseInit {
    status?: number;
    statusText?: string;
    headers?: HeadersInit;
}
interface Response extends Body {
    readonly url: string;
    readonly status: number;
    readonly statusText: string;
    /** Whether the status is between 200 and 299. */
    readonly ok: boolean;
    readonly headers: Headers;
    readonly redirected: boolean;
    readonly type: 'basic' | 'default' | 'error';
    clone(): Response;
}
declare var Response: {
    new (body?: BodyInit | null, options?: ResponseInit): Response;
    readonly prototype: Response;
    error(): Response;
    json(data: unknown, options?: ResponseInit): Response;
    redirect(url: string | URL, status?: number): Response;
};

/** Asks a server. The command keeps running until the answer is there. */
declare function fetch(input: string | URL | Request, options?: RequestInit): Promise<Response>;

declare class URL {
    constructor(url: string | URL, base?: string | URL);
    static canParse(url: string | URL, base?: string | URL): boolean;
    static parse(url: string | URL, base?: string | URL): URL | null;
    hash: string;
    host: string;
    hostname: string;
    href: string;
    readonly origin: string;
    password: string;
    pathname: string;
    port: string;
    protocol: string;
    search: string;
    readonly searchParams: URLSearchParams;
    username: string;
    toString(): string;
    toJSON(): string;
}
declare class URLSearchParams {
    constructor(init?: string | Record<string, string> | Iterable<readonly [string, string]> | URLSearchParams);
    readonly size: number;
    append(name: string, value: string): void;
    delete(name: string, value?: string): void;
    get(name: string): string | null;
    getAll(name: string): string[];
    has(name: string, value?: string): boolean;
    set(name: string, value: string): void;
    sort(): void;
    forEach(callback: (value: string, name: string, parameters: URLSearchParams) => void, thisArgument?: unknown): void;
    entries(): IterableIterator<[string, string]>;
    keys(): IterableIterator<string>;
    values(): IterableIterator<string>;
    [Symbol.iterator](): IterableIterator<[string, string]>;
    toString(): string;
}

declare class TextEncoder {
    readonly encoding: 'utf-8';
    encode(text?: string): Uint8Array<ArrayBuffer>;
    encodeInto(text: string, target: Uint8Array): { read: number; written: number };
}
declare class TextDecoder {
    constructor(encoding?: string, options?: { fatal?: boolean; ignoreBOM?: boolean });
    readonly encoding: string;
    readonly fatal: boolean;
    readonly ignoreBOM: boolean;
    decode(bytes?: ArrayBuffer | ArrayBufferView, options?: { stream?: boolean }): string;
}

declare var performance: {
    /** Milliseconds, with their fractions, since `timeOrigin`. */
    now(): number;
    readonly timeOrigin: number;
    toJSON(): { timeOrigin: number };
};

/** A copy in depth. */
declare function structuredClone<Value>(value: Value): Value;
/** The text, one character per byte, that base64 stands for. */
declare function atob(base64: string): string;
/** Base64 of a text, one byte per character. */
declare function btoa(text: string): string;
