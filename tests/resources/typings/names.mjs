// What a compiler sees: node names.mjs TYPESCRIPT TYPINGS. Prints an object with the exports of each module under
// "modules", the globals under "globals" (those of the language under "language"), and the members of classes under
// "classes".

import { createRequire } from 'node:module';
import path from 'node:path';

const [typescript, typings] = process.argv.slice(2);
const ts = createRequire(import.meta.url)(path.resolve(typescript));
const config = ts.readConfigFile(path.join(typings, 'jsconfig.json'), ts.sys.readFile).config;
const { options } = ts.parseJsonConfigFileContent({ ...config, files: ['index.d.ts'], include: [] }, ts.sys, typings);
const program = ts.createProgram([path.join(typings, 'index.d.ts')], options);
const checker = program.getTypeChecker();
const { Value } = ts.SymbolFlags;

const isOurs = (symbol) => symbol.declarations?.some(
    (declaration) => path.resolve(declaration.getSourceFile().fileName).startsWith(path.resolve(typings)));
// Names that begin with an underscore are nobody's but the implementation's, and symbols have no names.
const isName = (name) => !name.startsWith('_');
const namesOf = (symbols) => [...new Set(symbols.map((symbol) => symbol.name))].filter(isName).sort();
const membersOf = (type) => namesOf(checker.getPropertiesOfType(type).filter((member) => member.flags & Value && isOurs(member)));

function exportsOf(module) {
    const exported = checker.resolveExternalModuleSymbol(module);
    return checker.getPropertiesOfType(checker.getTypeOfSymbol(exported)).filter((symbol) => symbol.name !== 'prototype');
}

// Of the objects that a class makes; of an object its own.
function noteMembers(name, symbol) {
    const type = checker.getTypeOfSymbol(symbol);
    const prototype = type.getProperty('prototype');
    const members = membersOf(prototype ? checker.getTypeOfSymbol(prototype) : type);
    if (members.length > 0)
        result.classes[name] = members;
}

const result = { modules: {}, globals: [], language: [], classes: {} };
for (const module of checker.getAmbientModules()) {
    const name = module.name.slice(1, -1);
    const exports = exportsOf(module).filter(isOurs);
    result.modules[name] = namesOf(exports);
    for (const symbol of exports) {
        if (name.startsWith('korvan'))
            noteMembers(`${name}.${symbol.name}`, symbol);
    }
}
for (const symbol of checker.getSymbolsInScope(program.getSourceFile(path.join(typings, 'index.d.ts')), Value)) {
    if (symbol.name !== '__filename' && symbol.name !== '__dirname' && !symbol.name.startsWith('"'))
        result[isOurs(symbol) ? 'globals' : 'language'].push(symbol.name);
    if (isOurs(symbol))
        noteMembers(symbol.name, symbol);
}
console.log(JSON.stringify(result));
