// What node's "os" tells, of the computer that the application runs on.
const system = require('host:system');
const { platform, arch } = require('process');

module.exports = {
    EOL: '\n',
    devNull: '/dev/null',
    hostname: () => system.hostname,
    type: () => system.type,
    platform: () => platform,
    arch: () => arch,
    machine: () => system.machine,
    release: () => system.release,
    version: () => system.version,
    endianness: () => system.endianness,
    homedir: () => system.homedir,
    tmpdir: () => system.tmpdir,
    cpus: () => system.cpus.map((processor) => ({ ...processor })),
    availableParallelism: () => system.cpus.length,
    totalmem: () => system.totalmem,
    freemem: () => system.freemem(),
    uptime: () => system.uptime(),
    loadavg: () => system.loadavg(),
    networkInterfaces: () => ({}),
    userInfo: () => ({
        uid: system.uid, gid: system.gid, username: system.username, homedir: system.homedir, shell: system.shell,
    }),
};
