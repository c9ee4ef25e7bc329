const named = require('./support/names');
const { checkType } = require('./support/arguments');
const EventEmitter = require('npm:events');

named({ EventEmitter });

// The package's errors have no codes.
for (const name of ['addListener', 'once', 'prependListener', 'prependOnceListener', 'removeListener']) {
    const original = EventEmitter.prototype[name];
    EventEmitter.prototype[name] = function (event, listener) {
        checkType(listener, 'listener', 'function');
        return original.call(this, event, listener);
    };
    named({ [name]: EventEmitter.prototype[name] });
}

EventEmitter.prototype.on = EventEmitter.prototype.addListener;
EventEmitter.prototype.off = EventEmitter.prototype.removeListener;

// What node's "events" has learnt since the package was written, of what is cheap.
Object.assign(EventEmitter, {
    getEventListeners: (emitter, name) => emitter.listeners(name),
    getMaxListeners: (emitter) => emitter.getMaxListeners(),
    setMaxListeners(count, ...emitters) {
        for (const emitter of emitters)
            emitter.setMaxListeners(count);
        if (emitters.length === 0)
            EventEmitter.defaultMaxListeners = count;
    },
});

module.exports = EventEmitter;
