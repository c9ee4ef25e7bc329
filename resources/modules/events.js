const EventEmitter = require('npm:events');

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
