// Bundles the core modules: node build.mjs PACKAGES OUTPUT
//
// PACKAGES is a folder with a node_modules as package-lock.json says. Each file modules/NAME.js becomes
// OUTPUT/core-modules/@krpm/NAME/index.js, with everything in it that it requires but the other core modules: those
// stay calls of require, so that a script meets one EventEmitter and one Buffer. Each file api/NAME.js becomes
// OUTPUT/NAME.js in the same way. OUTPUT/core-modules/LICENSES.txt has the licence of every package that went into a
// bundle; a package without one fails the build.

import { createRequire } from 'node:module';
import fs from 'node:fs';
import path from 'node:path';
import { fileURLToPath } from 'node:url';

const [packages, output] = process.argv.slice(2).map((folder) => path.resolve(folder));
const sources = path.dirname(fileURLToPath(import.meta.url));
const modulesFolder = path.join(sources, 'modules');
const apiFolder = path.join(sources, 'api');
const esbuild = createRequire(path.join(packages, 'package.json'))('esbuild');

const coreModules = ['buffer', 'console', 'events', 'os', 'path', 'process', 'querystring', 'stream', 'string_decoder',
    'timers', 'util'];
// Packages ask for globals while they are being loaded, to see what the engine has. Here that would load further core
// modules, which most scripts never use.
const later = `const later = {
    AbortController: function () { return new AbortController(); },
    AbortSignal: { any: (signals) => AbortSignal.any(signals) },
    TextEncoder: function () { return { encode: (text) => new TextEncoder().encode(text) }; },
    TextDecoder: function (...options) { return { decode: (bytes) => new TextDecoder(...options).decode(bytes) }; },
};`;
const encodings = { banner: 'const engine = { decodeURIComponent, escape };', define: { globalThis: 'engine' } };
const adjustments = {
    'text-encoding': encodings, 'multi-byte-full': encodings, 'single-byte-full': encodings,
    url: { banner: later, define: { TextEncoder: 'later.TextEncoder', TextDecoder: 'later.TextDecoder' } },
    'util-full': { define: { 'process.env.NODE_DEBUG': 'undefined' } },
    'stream-full': {
        banner: later,
        define: {
            'globalThis.AbortController': 'later.AbortController',
            'globalThis.AbortSignal': 'later.AbortSignal',
            'process.env.READABLE_STREAM': 'undefined',
        },
    },
};
// What a bundle loads only when it needs it: a file of its own beside the bundle's index.js.
const parts = {
    stream: ['legacy-full', 'stream-full'],
    'text-encoding': ['multi-byte-full', 'single-byte-full'],
    url: ['tr46-full'],
    util: ['comparisons-full', 'inspect-full', 'util-full'],
};

// "npm:NAME" is the package of that name. Without the prefix a core module's name is the session's module, in the
// sources of packages too.
const sessionModules = {
    name: 'session-modules',
    setup(build) {
        const resolveDir = path.join(packages, 'node_modules');
        build.onResolve({ filter: /^npm:/ }, ({ path: name }) =>
            build.resolve('./' + name.slice(4), { kind: 'require-call', resolveDir }));
        build.onResolve({ filter: /^(host:|korvan$|korvan\/)/ }, ({ path: name }) => ({ path: name, external: true }));
        build.onResolve({ filter: /^\.\/[^/]+-full$/ }, ({ path: name }) => ({ path: name, external: true }));
        // The package's other streams are those of the class that scripts already have.
        build.onResolve({ filter: /\/legacy$/ }, ({ importer }) =>
            (importer.includes('/readable-stream/') ? { path: './legacy-full', external: true } : undefined));
        build.onResolve({ filter: /^@exodus\/bytes\/single-byte\.js$/ }, ({ importer }) =>
            (importer.endsWith('/encoding.js') ? { path: path.join(modulesFolder, 'support/single-byte.js') } : undefined));
        // As the streams write them.
        build.onResolve({ filter: /^(process|string_decoder)\/$/ }, ({ path: name }) =>
            ({ path: path.join(modulesFolder, 'support', `later-${name.slice(0, -1)}.js`) }));
        build.onResolve({ filter: /^[a-z_0-9-]+\/?$/ }, ({ path: name }) => {
            const plain = name.replace(/\/$/, '');
            if (coreModules.includes(plain))
                return { path: plain, external: true };
            const own = path.join(modulesFolder, 'support', plain + '.js');
            return fs.existsSync(own) ? { path: own } : undefined;
        });
    },
};

// The bundler names each module's function after its path on this machine; from the package's name on is enough.
function withPlainNames(script) {
    const pathBeforeFunction = /\{"[^"\n]*?(?:node_modules|resources\/modules|resources\/api)\/([^"\n]+)"\(/g;
    return script.replace(pathBeforeFunction, (match, rest) => `{"${rest.replace(/^.*node_modules\//, '')}"(`);
}

async function bundle(entry, file) {
    const { banner = '', define = {} } = adjustments[path.basename(entry, '.js')] ?? {};
    const result = await esbuild.build({
        entryPoints: [entry],
        outfile: file,
        bundle: true,
        format: 'cjs',
        platform: 'neutral',
        mainFields: ['browser', 'main'],
        nodePaths: [path.join(packages, 'node_modules')],
        target: 'safari16.4',
        minifySyntax: true,
        minifyWhitespace: true, // names stay: they stand in stacks, and a class has its name
        legalComments: 'none',
        banner: { js: banner },
        define,
        metafile: true,
        write: false,
        absWorkingDir: packages,
        logLevel: 'warning',
        plugins: [sessionModules],
    });
    fs.mkdirSync(path.dirname(file), { recursive: true });
    fs.writeFileSync(file, withPlainNames(result.outputFiles[0].text));
    return Object.keys(result.metafile.inputs);
}

// The package folders, seen from PACKAGES, of the files that went into bundles.
function packagesOf(inputs) {
    const folders = new Set();
    for (const input of inputs) {
        const match = /^(.*node_modules\/(?:@[^/]+\/)?[^/]+)\//.exec(input);
        if (match)
            folders.add(match[1]);
    }
    return [...folders].sort();
}

function licenceOf(folder) {
    const absolute = path.join(packages, folder);
    const { name, version, license } = JSON.parse(fs.readFileSync(path.join(absolute, 'package.json'), 'utf8'));
    const file = fs.readdirSync(absolute).find((entry) => /^(licen[cs]e|copying)(\.|-|$)/i.test(entry));
    if (!license || !file)
        throw new Error(`The package ${name} has no licence. It cannot be shipped.`);
    const text = fs.readFileSync(path.join(absolute, file), 'utf8').trim();
    return `${name} ${version} (${license})\n\n${text}\n`;
}

function scriptsIn(folder) {
    const names = fs.existsSync(folder) ? fs.readdirSync(folder) : [];
    return names.filter((name) => name.endsWith('.js')).sort();
}

const inputs = new Set();
async function make(entry, file) {
    for (const input of await bundle(entry, file))
        inputs.add(input);
}

fs.rmSync(output, { recursive: true, force: true });
for (const entry of scriptsIn(modulesFolder)) {
    const name = path.basename(entry, '.js');
    const folder = path.join(output, 'core-modules/@krpm', name);
    await make(path.join(modulesFolder, entry), path.join(folder, 'index.js'));
    for (const part of parts[name] ?? [])
        await make(path.join(modulesFolder, 'support', part + '.js'), path.join(folder, part + '.js'));
}
for (const entry of scriptsIn(apiFolder))
    await make(path.join(apiFolder, entry), path.join(output, entry));
const licences = packagesOf(inputs).map(licenceOf);
fs.writeFileSync(path.join(output, 'core-modules/LICENSES.txt'), licences.join(`\n${'-'.repeat(80)}\n\n`));
