// Errors for arguments, as node words them.
function received(value) {
    if (value === null || value === undefined)
        return String(value);
    if (typeof value === 'function')
        return `function ${value.name}`;
    if (typeof value === 'object')
        return `an instance of ${value.constructor?.name ?? 'Object'}`;
    return `type ${typeof value} (${typeof value === 'string' ? `'${value}'` : String(value)})`;
}

/** Throws when the type of a value is another than that of its name, "function" or "number". */
function checkType(value, name, type) {
    if (typeof value === type && value !== null)
        return;
    const kind = name.includes('.') ? 'property' : 'argument';
    const error = new TypeError(`The "${name}" ${kind} must be of type ${type}. Received ${received(value)}`);
    throw Object.assign(error, { code: 'ERR_INVALID_ARG_TYPE' });
}

module.exports = { checkType };
