// In place of the package abort-controller: the session's own.
module.exports = { AbortController: globalThis.AbortController, AbortSignal: globalThis.AbortSignal };
