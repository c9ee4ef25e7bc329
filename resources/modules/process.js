// What node's "process" tells, of the application that the script runs in.
const EventEmitter = require('events');
const { checkType } = require('./support/arguments');
const host = require('host:process');
const clock = require('host:clock');

const process = module.exports = Object.create(EventEmitter.prototype);
EventEmitter.call(process);

function refuse(operation, advice) {
    const error = new Error(`process.${operation}() would act on the whole application. ${advice}`);
    error.code = 'ERR_FEATURE_UNAVAILABLE_ON_PLATFORM';
    throw error;
}

function hrtime(earlier) {
    const now = BigInt(clock.nanoseconds());
    const seconds = Number(now / 1000000000n) - (earlier ? earlier[0] : 0);
    const nanoseconds = Number(now % 1000000000n) - (earlier ? earlier[1] : 0);
    return nanoseconds < 0 ? [seconds - 1, nanoseconds + 1e9] : [seconds, nanoseconds];
}
hrtime.bigint = () => BigInt(clock.nanoseconds());

// Texts go to the log, which has lines of its own.
const writer = (write) => ({
    isTTY: false,
    writable: true,
    write(text) {
        write(String(text).replace(/\n$/, ''));
        return true;
    },
});

Object.assign(process, {
    title: 'korvan',
    version: `v${host.version}`,
    versions: { korvan: host.version },
    release: { name: 'korvan' },
    platform: host.platform,
    arch: host.arch,
    pid: host.pid,
    ppid: host.ppid,
    execPath: host.execPath,
    execArgv: [],
    argv: [host.execPath, host.script],
    argv0: host.execPath,
    env: { ...host.env },
    exitCode: undefined,
    stdout: writer(host.write),
    stderr: writer((text) => console.error(text)),
    cwd: () => host.cwd(),
    chdir: () => refuse('chdir', 'Use absolute paths instead.'),
    exit: () => refuse('exit', 'Return from the handler instead.'),
    abort: () => refuse('abort', 'Return from the handler instead.'),
    kill: () => refuse('kill', 'Return from the handler instead.'),
    hrtime,
    uptime: () => clock.now() / 1000,
    memoryUsage: () => host.memoryUsage(),
    nextTick(callback, ...values) {
        checkType(callback, 'callback', 'function');
        queueMicrotask(() => callback(...values));
    },
    emitWarning(warning) { console.warn(String(warning)); },
});
Object.defineProperty(process, Symbol.toStringTag, { value: 'process', configurable: true });
