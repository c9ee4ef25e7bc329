// The globals of every session, but for the console. This runs at the start of each one, so it only names them: what they
// do is in library.js, loaded when one of them is first used. The text is constant and short, because the engine compiles
// it once per process, but copies and hashes it for each session.
//
// `host(code, ...)` asks the session for something; the codes are those of HostFunction.
(function (host) {
    'use strict';
    const PRINT = 0, LIBRARY = 11;
    const global = globalThis;
    let library;

    global.print = function print(value) { host(PRINT, value); };
    global.log = function log(...values) { (library ??= host(LIBRARY)).console.log(...values); };
    global.require = function require(name) { return (library ??= host(LIBRARY)).requireModule(name, ''); };
    global.setTimeout = function setTimeout(callback, delay, ...values) {
        return (library ??= host(LIBRARY)).startTimer('setTimeout', callback, delay, false, values);
    };
    global.setInterval = function setInterval(callback, delay, ...values) {
        return (library ??= host(LIBRARY)).startTimer('setInterval', callback, delay, true, values);
    };
    global.setImmediate = function setImmediate(callback, ...values) {
        return (library ??= host(LIBRARY)).startTimer('setImmediate', callback, 0, false, values);
    };
    global.clearTimeout = function clearTimeout(id) { library?.stopTimer(id); };
    global.clearInterval = function clearInterval(id) { library?.stopTimer(id); };
    global.clearImmediate = function clearImmediate(id) { library?.stopTimer(id); };
    global.queueMicrotask = function queueMicrotask(callback) {
        (library ??= host(LIBRARY)).queueMicrotask(callback);
    };

    // Makes a global that the session hands over when a script first asks for it; an ordinary one from then on.
    return function defineLater(name, code, enumerable) {
        const settle = (value) => {
            Object.defineProperty(global, name, { value, writable: true, configurable: true, enumerable });
            return value;
        };
        Object.defineProperty(global, name, {
            get: () => settle(host(code, name)), set: settle, configurable: true, enumerable,
        });
    };
})
