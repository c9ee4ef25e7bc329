// Events, aborting, cloning and base64 as web pages have them.
const named = require('./support/names');
const { Event, EventTarget } = require('npm:event-target-shim');
const DOMException = require('npm:core-js-pure/actual/dom-exception');
const structuredClone = require('npm:core-js-pure/actual/structured-clone');
const atob = require('npm:core-js-pure/actual/atob');
const btoa = require('npm:core-js-pure/actual/btoa');
const { AbortController, AbortSignal } = require('./support/abort')({ Event, EventTarget, DOMException });

module.exports = named({
    AbortController, AbortSignal, DOMException, Event, EventTarget, structuredClone,
    atob: (text) => atob(text),
    btoa: (text) => btoa(text),
});
