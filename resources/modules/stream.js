// Node's "stream". The oldest class of streams, which is the module itself, is here at once; the others come when one of
// them is first asked for.
const lazily = require('./support/lazily');
const { Stream } = require('./legacy-full');

lazily(Stream, ['isDestroyed', 'isDisturbed', 'isErrored', 'isReadable', 'isWritable', 'Readable', 'Writable', 'Duplex',
    'Transform', 'PassThrough', 'pipeline', 'addAbortSignal', 'finished', 'destroy', 'compose', 'setDefaultHighWaterMark',
    'getDefaultHighWaterMark', 'promises', 'Stream', '_isUint8Array', '_uint8ArrayToBuffer'],
(name) => require('./stream-full')[name]);

module.exports = Stream;
