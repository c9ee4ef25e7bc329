// The package's Headers pass over what cannot be a field; here, as in node, it is an error.
const { Headers: Lenient } = require('npm:headers-polyfill');

const isName = (name) => /^[!#$%&'*+\-.^_`|~0-9A-Za-z]+$/.test(name);
const isValue = (value) => !/[\0\r\n]|[^\0-\xff]/.test(value);

function checked(name, value) {
    const text = String(value).replace(/^[\t\n\r ]+|[\t\n\r ]+$/g, '');
    if (!isName(name))
        throw new TypeError(`Headers cannot have a field named "${name}".`);
    if (!isValue(text))
        throw new TypeError(`The value of the field "${name}" has characters that headers cannot have.`);
    return text;
}

class Headers extends Lenient {
    constructor(fields = []) {
        super();
        if (fields === null || typeof fields !== 'object')
            throw new TypeError('Headers are made from an object, from pairs of name and value, or from other headers.');
        const pairs = typeof fields[Symbol.iterator] === 'function' ? [...fields] : Object.entries(fields);
        for (const pair of pairs) {
            if (pair.length !== 2)
                throw new TypeError('Headers need pairs of name and value.');
            this.append(...pair);
        }
    }
    append(name, value) { super.append(String(name), checked(name, value)); }
    set(name, value) { super.set(String(name), checked(name, value)); }
}

const canBeField = (name, value) => isName(name) && isValue(value);

module.exports = { Headers, canBeField };
