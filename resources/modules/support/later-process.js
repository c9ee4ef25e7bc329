// What streams ask of the process, without loading the module for it.
module.exports = {
    nextTick: (callback, ...values) => queueMicrotask(() => callback(...values)),
    emitWarning: (warning) => require('process').emitWarning(warning),
};
