// What the globals of a session do. The session loads it when one of them is first used; the text is constant, so the
// engine compiles it once per process.
//
// `host(code, ...)` asks the session for something; the codes are those of HostFunction.
(function (host) {
    'use strict';

    const PRINT = 0, PRINT_ERROR = 1, DESCRIBE = 2, NOW = 3, STACK = 4, START_TIMER = 5, STOP_TIMER = 6,
        RESOLVE_MODULE = 7, COMPILE_MODULE = 8, READ_MODULE = 9, SETTLED = 10, HOST_SERVICE = 14;

    const { getPrototypeOf, keys, defineProperty } = Object;
    const { apply } = Reflect;
    const { then } = Promise.prototype;

    function requireFunction(name, value) {
        if (typeof value !== 'function')
            throw new TypeError(`${name} needs a function to call, but was given ${host(DESCRIBE, value)}.`);
    }

    // Timers ------------------------------------------------------------------------------------------------------

    const timers = new Map();
    let latestTimer = 0;

    function startTimer(name, callback, delay, repeats, values) {
        requireFunction(name, callback);
        const id = ++latestTimer;
        timers.set(id, { callback, repeats, values });
        host(START_TIMER, id, +delay, repeats);
        return id;
    }

    function stopTimer(id) {
        if (timers.delete(id))
            host(STOP_TIMER, id);
    }

    function fireTimer(id) {
        const timer = timers.get(id);
        if (timer === undefined)
            return;
        if (!timer.repeats)
            timers.delete(id);
        apply(timer.callback, undefined, timer.values);
    }

    function queueMicrotask(callback) {
        requireFunction('queueMicrotask', callback);
        apply(then, Promise.resolve(), [() => { callback(); }]);
    }

    // Output ------------------------------------------------------------------------------------------------------

    function textOf(value) {
        return typeof value === 'string' ? value : host(DESCRIBE, value);
    }

    function makeConsole() {
        let indentation = '';
        const clocks = new Map();
        const counts = new Map();

        function replacement(letter, value) {
            switch (letter) {
            case 's': return textOf(value);
            case 'd': return typeof value === 'object' ? 'NaN' : String(Number(value));
            case 'i': return typeof value === 'object' ? 'NaN' : String(parseInt(value, 10));
            case 'f': return String(parseFloat(value));
            case 'c': return '';
            default: return host(DESCRIBE, value);
            }
        }

        // "%s", "%d" and their kin take the values that follow; what is left over is appended.
        function format(values) {
            let next = 0;
            let text = '';
            if (typeof values[0] === 'string') {
                next = 1;
                text = values[0].replace(/%[sdifjoOc%]/g, (match) => {
                    if (match === '%%')
                        return values.length > 1 ? '%' : match;
                    return next < values.length ? replacement(match[1], values[next++]) : match;
                });
            }
            for (; next < values.length; ++next)
                text += (next > 0 ? ' ' : '') + textOf(values[next]);
            return text;
        }

        function write(code, values) {
            if (values.length === 1 && indentation === '')
                host(code, values[0]);
            else
                host(code, indentation + format(values).replaceAll('\n', '\n' + indentation));
        }

        const named = (label) => (label === undefined ? 'default' : String(label));
        const elapsed = (label) => `${label}: ${host(NOW) - clocks.get(label)} ms`;
        const missing = (label) => `There is no timer named "${label}".`;

        const open = (values) => {
            if (values.length > 0)
                write(PRINT, values);
            indentation += '  ';
        };

        return {
            log(...values) { write(PRINT, values); },
            info(...values) { write(PRINT, values); },
            debug(...values) { write(PRINT, values); },
            warn(...values) { write(PRINT, values); },
            dir(value) { write(PRINT, [value]); },
            dirxml(...values) { write(PRINT, values); },
            clear() {}, // what is logged stays
            error(...values) { write(PRINT_ERROR, values); },
            trace(...values) {
                const message = format(values);
                write(PRINT, ['Trace' + (message === '' ? '' : ': ' + message) + host(STACK, new Error().stack)]);
            },
            assert(condition, ...values) {
                if (!condition)
                    write(PRINT_ERROR, ['Assertion failed' + (values.length === 0 ? '' : ': ' + format(values))]);
            },
            time(label) { clocks.set(named(label), host(NOW)); },
            timeLog(label, ...values) {
                label = named(label);
                write(PRINT, clocks.has(label) ? [elapsed(label), ...values] : [missing(label)]);
            },
            timeEnd(label) {
                label = named(label);
                write(PRINT, [clocks.has(label) ? elapsed(label) : missing(label)]);
                clocks.delete(label);
            },
            count(label) {
                label = named(label);
                counts.set(label, (counts.get(label) ?? 0) + 1);
                write(PRINT, [`${label}: ${counts.get(label)}`]);
            },
            countReset(label) { counts.delete(named(label)); },
            group(...values) { open(values); },
            groupCollapsed(...values) { open(values); },
            groupEnd() { indentation = indentation.slice(2); },
            table(data, columns) { write(PRINT, [tableText(data, columns) ?? data]); },
        };
    }

    // One row per element, one column per property; undefined when there is nothing to tabulate.
    function tableText(data, chosenColumns) {
        if (typeof data !== 'object' || data === null)
            return undefined;
        const rows = [];
        const columns = new Set(chosenColumns);
        let hasValues = false;
        for (const [index, row] of tableEntries(data)) {
            const cells = new Map();
            const isRecord = typeof row === 'object' && row !== null;
            for (const column of isRecord ? keys(row) : []) {
                if (chosenColumns === undefined)
                    columns.add(column);
                cells.set(column, host(DESCRIBE, row[column]));
            }
            hasValues ||= !isRecord;
            rows.push({ index: textOf(index), cells, value: isRecord ? '' : host(DESCRIBE, row) });
        }
        return drawTable([
            ['(index)', ...columns, ...(hasValues ? ['Values'] : [])],
            ...rows.map(({ index, cells, value }) => [
                index, ...[...columns].map((column) => cells.get(column) ?? ''), ...(hasValues ? [value] : []),
            ]),
        ]);
    }

    function tableEntries(data) {
        if (data instanceof Map)
            return [...data];
        return data instanceof Set ? [...data].map((value, index) => [index, value])
            : keys(data).map((key) => [key, data[key]]);
    }

    function drawTable([heading, ...rows]) {
        const widths = heading.map((title, i) => rows.reduce(
            (width, row) => Math.max(width, row[i].length), title.length));
        const line = (left, cross, right) => left + widths.map((width) => '\u2500'.repeat(width + 2)).join(cross) + right;
        const drawRow = (texts) => '\u2502 ' + texts.map((text, i) => text.padEnd(widths[i])).join(' \u2502 ') + ' \u2502';
        return [line('\u250c', '\u252c', '\u2510'), drawRow(heading), line('\u251c', '\u253c', '\u2524'), ...rows.map(drawRow), line('\u2514', '\u2534', '\u2518')]
            .join('\n');
    }

    // Modules -----------------------------------------------------------------------------------------------------

    const modules = new Map();

    function readJSON(filename) {
        const text = host(READ_MODULE, filename);
        try {
            return JSON.parse(text);
        } catch (error) {
            error.message = `${filename}: ${error.message}`;
            throw error;
        }
    }

    function loadModule(module) {
        if (module.filename.endsWith('.json')) {
            module.exports = readJSON(module.filename);
            return;
        }
        const body = host(COMPILE_MODULE, module.filename);
        const folder = module.filename.slice(0, module.filename.lastIndexOf('/')) || '/';
        const requireFromModule = function require(name) { return requireModule(name, module.filename); };
        apply(body, module.exports, [module.exports, requireFromModule, module, module.filename, folder]);
    }

    function requireModule(name, requirer) {
        if (typeof name === 'string' && name.startsWith('host:'))
            return host(HOST_SERVICE, name, requirer);
        return requireFile(host(RESOLVE_MODULE, name, requirer));
    }

    function requireFile(filename) {
        let module = modules.get(filename);
        if (module === undefined) {
            module = { id: filename, filename, exports: {}, loaded: false };
            modules.set(filename, module);
            try {
                loadModule(module);
            } catch (error) {
                modules.delete(filename);
                throw error;
            }
            module.loaded = true;
        }
        return module.exports;
    }

    // For the session ---------------------------------------------------------------------------------------------

    let beingDescribed;

    // Texts of the values that C++ has no type for.
    function describe(value) {
        beingDescribed ??= new Set();
        if (beingDescribed.has(value))
            return '[Circular]';
        beingDescribed.add(value);
        try {
            return describeOnce(value);
        } finally {
            beingDescribed.delete(value);
        }
    }

    function describeOnce(value) {
        if (typeof value === 'function') {
            const isClass = /^class\b/.test(apply(Function.prototype.toString, value, []));
            return `[${isClass ? 'Class' : 'Function'}${value.name ? ': ' + value.name : ''}]`;
        }
        if (typeof value !== 'object' || value === null)
            return typeof value === 'bigint' ? `${value}n` : String(value);
        if (value instanceof Error || value instanceof RegExp)
            return String(value);
        if (value instanceof Map)
            return `Map(${value.size}) ${host(DESCRIBE, [...value])}`;
        if (value instanceof Set)
            return `Set(${value.size}) ${host(DESCRIBE, [...value])}`;
        if (value instanceof Promise)
            return '[Promise]';
        const prototype = getPrototypeOf(value);
        const name = prototype?.constructor?.name;
        if (prototype?.[Symbol.toStringTag] !== undefined || !name)
            return String(value);
        return `${name} ${host(DESCRIBE, { ...value })}`;
    }

    // Assigning to it would set the object's prototype.
    function defineProtoProperty(object, value) {
        defineProperty(object, '__proto__',
            { __proto__: null, value, writable: true, enumerable: true, configurable: true });
    }

    function watchPromise(promise, id) {
        apply(then, promise, [
            (value) => { host(SETTLED, id, true, value); },
            (reason) => { host(SETTLED, id, false, reason); },
        ]);
    }

    return {
        console: makeConsole(), startTimer, stopTimer, fireTimer, queueMicrotask, requireModule, requireFile, keys, describe,
        defineProtoProperty, watchPromise,
    };
})
