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
// What a bundle loads only when it needs it: a file of its own beside the bundle's index.js.
const parts = { url: ['tr46-full'] };

// "npm:NAME" is the package of that name. Without the prefix a core module's name is the session's module, in the
// sources of packages too.
const sessionModules = {
    name: 'session-modules',
    setup(build) {
        build.onResolve({ filter: /^npm:/ }, ({ path: name }) =>
            build.resolve('./' + name.slice(4), { kind: 'require-call', resolveDir: path.join(packages, 'node_modules') }));
        build.onResolve({ filter: /^(host:|korvan$|korvan\/)/ }, ({ path: name }) => ({ path: name, external: true }));
        build.onResolve({ filter: /^\.\/[^/]+-full$/ }, ({ path: name }) => ({ path: name, external: true }));
        build.onResolve({ filter: /^[a-z_0-9-]+\/?$/ }, ({ path: name }) => {
            const plain = name.replace(/\/$/, '');
            if (coreModules.includes(plain))
                return { path: plain, external: true };
            const own = path.join(modulesFolder, 'support', plain + '.js');
            return fs.existsSync(own) ? { path: own } : undefined;
        });
    },
};

async function bundle(entry, file) {
    const result = await esbuild.build({
        entryPoints: [entry],
        outfile: file,
        bundle: true,
        format: 'cjs',
        platform: 'neutral',
        mainFields: ['browser', 'main'],
        nodePaths: [path.join(packages, 'node_modules')],
        target: 'safari16.4',
        minify: true,
        keepNames: false,
        legalComments: 'none',
        metafile: true,
        absWorkingDir: packages,
        logLevel: 'warning',
        plugins: [sessionModules],
    });
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

const scriptsIn = (folder) => (fs.existsSync(folder) ? fs.readdirSync(folder) : []).filter((name) => name.endsWith('.js')).sort();
const inputs = new Set();
fs.rmSync(output, { recursive: true, force: true });
for (const entry of scriptsIn(modulesFolder)) {
    const name = path.basename(entry, '.js');
    const folder = path.join(output, 'core-modules/@krpm', name);
    for (const input of await bundle(path.join(modulesFolder, entry), path.join(folder, 'index.js')))
        inputs.add(input);
    for (const part of parts[name] ?? []) {
        for (const input of await bundle(path.join(modulesFolder, 'support', part + '.js'), path.join(folder, part + '.js')))
            inputs.add(input);
    }
}
for (const entry of scriptsIn(apiFolder)) {
    for (const input of await bundle(path.join(apiFolder, entry), path.join(output, entry)))
        inputs.add(input);
}
const licences = packagesOf(inputs).map(licenceOf);
fs.writeFileSync(path.join(output, 'core-modules/LICENSES.txt'), licences.join(`\n${'-'.repeat(80)}\n\n`));
