// AbortController and AbortSignal over the event targets of a package.
const LONGEST_DELAY = 2 ** 31 - 1; // as a timer's

module.exports = function ({ Event, EventTarget, DOMException }) {
    const making = Symbol('making');
    const states = new WeakMap();

    class AbortSignal extends EventTarget {
        constructor(token) {
            if (token !== making)
                throw Object.assign(new TypeError('Illegal constructor'), { code: 'ERR_ILLEGAL_CONSTRUCTOR' });
            super();
            states.set(this, { aborted: false, reason: undefined, handler: null });
        }
        get aborted() { return states.get(this).aborted; }
        get reason() { return states.get(this).reason; }
        get onabort() { return states.get(this).handler; }
        set onabort(handler) {
            const state = states.get(this);
            if (state.handler)
                this.removeEventListener('abort', state.handler);
            state.handler = typeof handler === 'function' ? handler : null;
            if (state.handler)
                this.addEventListener('abort', state.handler);
        }
        get [Symbol.toStringTag]() { return 'AbortSignal'; }

        throwIfAborted() {
            if (this.aborted)
                throw this.reason;
        }

        static abort(reason) {
            const signal = new AbortSignal(making);
            abort(signal, reason);
            return signal;
        }
        static timeout(delay) {
            const signal = new AbortSignal(making);
            const message = 'The operation was aborted due to timeout';
            // A timer would keep the session running, also when what it limits has long ended.
            require('host:clock').alarm(Math.min(Math.max(Math.trunc(+delay) || 0, 0), LONGEST_DELAY),
                () => abort(signal, new DOMException(message, 'TimeoutError')));
            return signal;
        }
        static any(signals) {
            const signal = new AbortSignal(making);
            for (const source of signals) {
                if (source.aborted) {
                    abort(signal, source.reason);
                    break;
                }
                source.addEventListener('abort', () => abort(signal, source.reason), { once: true });
            }
            return signal;
        }
    }

    function abort(signal, reason = new DOMException('This operation was aborted', 'AbortError')) {
        const state = states.get(signal);
        if (state.aborted)
            return;
        state.aborted = true;
        state.reason = reason;
        signal.dispatchEvent(new Event('abort'));
    }

    class AbortController {
        #signal = new AbortSignal(making);
        get signal() { return this.#signal; }
        abort(reason) { abort(this.#signal, reason); }
        get [Symbol.toStringTag]() { return 'AbortController'; }
    }

    return { AbortController, AbortSignal };
};
