// Evaluates calls, in node and in a script session alike, and answers what they came to in a form that can be compared.
//
// The session makes globals of core modules for texts that mention them: AbortController AbortSignal Buffer
// DOMException Event EventTarget Headers Request Response TextDecoder TextEncoder URL URLSearchParams atob btoa fetch
// performance process structuredClone

async function evaluateCalls(calls, require) {
    const results = [];
    for (const call of calls)
        results.push(await evaluateCall(call, require));
    return results;
}

async function evaluateCall({ modules, expression }, require) {
    try {
        const work = new Function(...modules, `return (async () => (${expression}))()`);
        return { value: describe(await work(...modules.map((name) => require(name))), []) };
    } catch (error) {
        return { thrown: describe(error, []) };
    }
}

function describe(value, around) {
    switch (typeof value) {
    case 'string': return { text: value };
    case 'number': return Object.is(value, -0) ? '-0' : String(value);
    case 'bigint': return `${value}n`;
    case 'function': return 'function';
    case 'object': return value === null ? 'null' : describeObject(value, around);
    default: return String(value);
    }
}

function describeObject(value, around) {
    if (around.includes(value))
        return 'circle';
    const inside = [...around, value];
    const each = (values) => Array.from(values, (element) => describe(element, inside));
    const name = value.constructor?.name;
    if (value instanceof Error || name === 'DOMException')
        return { error: value.name, message: value.message, code: describe(value.code, inside) };
    if (Array.isArray(value))
        return each(value);
    if (ArrayBuffer.isView(value))
        return { [name]: Array.from(new Uint8Array(value.buffer, value.byteOffset, value.byteLength)).join() };
    if (value instanceof ArrayBuffer)
        return { [name]: Array.from(new Uint8Array(value)).join() };
    if (value instanceof Map || value instanceof Set)
        return { [name]: each(value) };
    if (value instanceof Date || value instanceof RegExp)
        return { [name]: String(value instanceof Date ? value.getTime() : value) };
    if (name === 'URL' || name === 'URLSearchParams')
        return { [name]: String(value) };
    const entries = Object.keys(value).map((key) => [key, describe(value[key], inside)]);
    return { object: name ?? null, entries };
}
