// The session's own timers, and the same as promises.
const promised = (start) => (delay, value) => new Promise((resolve) => { start(resolve, delay, value); });

module.exports = {
    setTimeout, setInterval, setImmediate, clearTimeout, clearInterval, clearImmediate,
    promises: {
        setTimeout: promised(setTimeout),
        setImmediate: (value) => promised((resolve) => setImmediate(resolve, value))(),
    },
};
