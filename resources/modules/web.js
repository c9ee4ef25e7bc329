// Events, aborting, cloning and base64 as web pages have them.
const named = require('./support/names');
const { inspectable } = require('./support/inspectable');
const { Event, EventTarget, setErrorHandler } = require('npm:event-target-shim');
const { serialize, deserialize } = require('npm:@ungap/structured-clone');
const base64 = require('npm:base-64');
const DOMException = require('./support/dom-exception');
const { AbortController, AbortSignal } = require('./support/abort')({ Event, EventTarget, DOMException });

// What a listener throws is an error of the script's, as that of a timer is; the other listeners are called all the same.
setErrorHandler((error) => { queueMicrotask(() => { throw error; }); });

inspectable(AbortController, ['signal']);
inspectable(AbortSignal, ['aborted']);

function orDOMException(name, work) {
    try {
        return work();
    } catch (error) {
        throw new DOMException(error.message, name);
    }
}

module.exports = named({
    AbortController, AbortSignal, DOMException, Event, EventTarget,
    structuredClone: (value) => orDOMException('DataCloneError', () => deserialize(serialize(value))),
    atob: (text) => orDOMException('InvalidCharacterError', () => base64.decode(text)),
    btoa: (text) => orDOMException('InvalidCharacterError', () => base64.encode(text)),
});
