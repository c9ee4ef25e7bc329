// Events, aborting, cloning and base64 as web pages have them.
const named = require('./support/names');
const { Event, EventTarget } = require('npm:event-target-shim');
const { serialize, deserialize } = require('npm:@ungap/structured-clone');
const base64 = require('npm:base-64');
const DOMException = require('./support/dom-exception');
const { AbortController, AbortSignal } = require('./support/abort')({ Event, EventTarget, DOMException });

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
