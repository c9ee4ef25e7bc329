// What a plug-in's tests are written with: `describe`, `it` and their kin, assertions, and the host that `korvan-plugins test`
// stands in for. Each test runs in a session of its own, which evaluates the whole file and then runs that one test.
'use strict';

const service = require('host:testing');
const { expect, assert } = require('npm:chai');
const { checkKeys, suggestion } = require('../api/support/describe');
const { structuredPatch } = require('npm:diff');

// Registering -------------------------------------------------------------------------------------------------------

const tests = [];
let suite = { title: null, parent: null, mode: 'run', before: [], after: [] };
let isLoading = false;

const suitesOf = (inner) => (inner === null ? [] : [...suitesOf(inner.parent), inner]);

function checkTitle(title, name) {
    if (typeof title !== 'string' || title === '')
        throw new TypeError(`${name}() needs a title, a text that says what is tested.`);
    if (!isLoading)
        throw new Error(`${name}() is called while the test's file is loaded, not in a test and not later.`);
}

function checkBody(body, name) {
    if (typeof body !== 'function')
        throw new TypeError(`${name}() needs a function.`);
}

function addSuite(mode, title, body) {
    checkTitle(title, 'describe');
    checkBody(body, 'describe');
    const outer = suite;
    suite = { title, parent: outer, mode, before: [], after: [] };
    try {
        if (typeof body()?.then === 'function')
            throw new TypeError('The function of describe() must not be async: it only says which tests there are.');
    } finally {
        suite = outer;
    }
}

function addTest(mode, title, body) {
    checkTitle(title, 'it');
    if (body !== undefined)
        checkBody(body, 'it');
    if (/^(?:async\s+)?(?:function\b[^(]*)?\(?\s*done\b/.test(String(body)))
        throw new TypeError('Tests have no done(): the function of it() returns a promise, or is async.');
    tests.push({ title, body, suite, mode: body === undefined ? 'skip' : mode, place: new Error(title) });
}

function withModes(add) {
    const run = (title, body) => add('run', title, body);
    run.skip = (title, body) => add('skip', title, body);
    run.only = (title, body) => add('only', title, body);
    return run;
}

const describe = withModes(addSuite);
const it = withModes(addTest);

function addHook(kind, name) {
    return (body) => {
        checkBody(body, name);
        if (!isLoading)
            throw new Error(`${name}() is called while the test's file is loaded.`);
        suite[kind].push(body);
    };
}

const globals = {
    describe, it, test: it, expect, assert,
    beforeEach: addHook('before', 'beforeEach'),
    afterEach: addHook('after', 'afterEach'),
};

// Running -----------------------------------------------------------------------------------------------------------

function load(require) {
    for (const [name, value] of Object.entries(globals))
        Object.defineProperty(globalThis, name, { value, writable: true, configurable: true, enumerable: false });
    isLoading = true;
    require(service.file());
    isLoading = false;
}

function descriptionOf(test) {
    const suites = suitesOf(test.suite);
    const modes = [test.mode, ...suites.map(({ mode }) => mode)];
    return {
        suite: suites.slice(1).map(({ title }) => title),
        title: test.title,
        mode: modes.includes('skip') ? 'skip' : modes.includes('only') ? 'only' : 'run',
    };
}

function textOf(value) {
    if (typeof value === 'string')
        return value;
    return require('util').inspect(value, { depth: 12, sorted: true, compact: false, maxArrayLength: 1000 });
}

// Finding all differences takes long when there are many.
const MOST_EDITS = 400;

function firstDifferenceOf(expected, actual) {
    const line = expected.findIndex((text, i) => text !== actual[i]);
    const lines = (sign, texts) => texts.slice(line, line + 3).map((text) => sign + text);
    return [...lines('-', expected), ...lines('+', actual), '  ...'].join('\n');
}

// What was expected and what came instead, line by line; null when the error does not say.
function differenceOf(error) {
    if (typeof error !== 'object' || error === null || !('actual' in error && 'expected' in error))
        return null;
    const [expected, actual] = [error.expected, error.actual].map((value) => textOf(value) + '\n');
    const patch = structuredPatch('', '', expected, actual, '', '', { context: 3, maxEditLength: MOST_EDITS });
    if (patch === undefined)
        return firstDifferenceOf(expected.split('\n'), actual.split('\n'));
    const { hunks } = patch;
    return hunks.length === 0 ? null : hunks.map(({ lines }) => lines.join('\n')).join('\n  ...\n');
}

// A promise that is rejected when the host sees that the test gets no further.
function stuck(test) {
    return new Promise((resolve, reject) => {
        service.onStuck((message) => {
            test.place.message = message;
            reject(test.place);
        });
    });
}

async function runTest(test, context) {
    const suites = suitesOf(test.suite);
    const failures = [];
    const attempt = async (work) => {
        try {
            await Promise.race([work(context), stuck(test)]);
        } catch (error) {
            failures.push(error);
        }
    };
    for (const hook of suites.flatMap(({ before }) => before)) {
        if (failures.length === 0)
            await attempt(hook);
    }
    if (failures.length === 0)
        await attempt(test.body);
    for (const hook of suites.reverse().flatMap(({ after }) => after))
        await attempt(hook);
    if (failures.length > 0) {
        service.failed(differenceOf(failures[0]));
        throw failures[0] ?? Object.assign(test.place, { message: `The test has thrown ${failures[0]}.` });
    }
}

// Loads the file that the host names, with the `require` of a script beside it. Then either tells the host which tests it
// has, or runs one of them.
async function perform(context, require) {
    load(require);
    const wanted = service.wanted();
    if (wanted < 0) {
        service.list(tests.map(descriptionOf));
        return;
    }
    const test = tests[wanted];
    if (test === undefined)
        throw new Error('The file has other tests each time it is loaded.');
    await runTest(test, context);
    await new Promise((resolve) => { service.afterwards(resolve); });
    service.passed();
}

// The host ----------------------------------------------------------------------------------------------------------

function runCommand(identifier, options = {}) {
    checkKeys(options, ['handler', 'context'], 'runCommand()');
    const { handler = 'run', context = {} } = options;
    return new Promise((resolve, reject) => {
        const caller = new Error();
        service.runCommand(String(identifier), String(handler), context, (reason, result) => {
            if (reason === null)
                return resolve(result);
            caller.message = reason;
            reject(caller);
        });
    });
}

// As the application does when it starts.
async function registerSuppliers() {
    for (const identifier of service.startupCommands())
        await runCommand(identifier, { handler: 'Startup' });
}

async function supplyData(supplier, layers) {
    const caller = new Error();
    const { activeDocument, from } = require('korvan/dom');
    const objects = (layers ?? activeDocument().layers).map((layer) => from(layer).hostObject);
    if (service.suppliers().length === 0)
        await registerSuppliers();
    return new Promise((resolve, reject) => {
        const fail = (reason) => {
            caller.message = reason;
            reject(caller);
        };
        try {
            service.supplyData(String(supplier), objects,
                (reason, values) => (reason === null ? resolve(values) : fail(reason)));
        } catch (error) {
            fail(error.message);
        }
    });
}

const clock = {
    now: () => service.now(),
    advance(milliseconds) {
        if (typeof milliseconds !== 'number' || !(milliseconds >= 0))
            throw new TypeError('clock.advance() needs a number of milliseconds.');
        return new Promise((resolve) => { service.advance(milliseconds, resolve); });
    },
};

const user = {
    answer(...answers) { service.answer(answers); },
    cancelProgress() {
        if (!service.cancelProgress())
            throw new Error('There is no progress that the user could cancel.');
    },
    get shown() { return service.shown(); },
};

const network = {
    answer(url, options = {}) {
        checkKeys(options, ['status', 'headers', 'body', 'error'], 'network.answer()');
        const { status = 200, headers = {}, body = '', error = null } = options;
        const isText = typeof body === 'string';
        const fields = isText ? headers : { 'content-type': 'application/json', ...headers };
        service.answerRequest(String(url), {
            status, headers: Object.entries(fields), body: isText ? body : JSON.stringify(body), error,
        });
    },
    get requests() { return service.requests(); },
};

function openValues(document) {
    service.openDocument(JSON.stringify(document));
    const { activeDocument } = require('korvan/dom');
    checkTypes(document.layers ?? [], activeDocument().hostObject.layerTypes());
}

function checkTypes(layers, types) {
    for (const { type, layers: inside } of layers) {
        if (type !== undefined && !types.includes(type)) {
            throw new TypeError(`openDocument() knows no type "${type}" of layers.${suggestion(type, types)} `
                + `There are: ${types.join(', ')}.`);
        }
        checkTypes(inside ?? [], types);
    }
}

module.exports = {
    ...globals, perform, runCommand, supplyData, clock, user, network,
    openDocument: (document = {}) => {
        if (typeof document === 'string')
            service.openDocumentFile(document);
        else
            openValues(document);
    },
    snapshot: () => JSON.parse(service.snapshot()),
    undo: () => service.undo(),
    redo: () => service.redo(),
    undoText: () => service.undoText(),
    log: () => service.log(),
    clearLog: () => { service.clearLog(); },
};
