// DOMException after its standard: an error with one of a set of names, some of which have a number.
const codes = ['IndexSizeError', , 'HierarchyRequestError', 'WrongDocumentError', 'InvalidCharacterError', ,
    'NoModificationAllowedError', 'NotFoundError', 'NotSupportedError', 'InUseAttributeError', 'InvalidStateError',
    'SyntaxError', 'InvalidModificationError', 'NamespaceError', 'InvalidAccessError', , 'TypeMismatchError',
    'SecurityError', 'NetworkError', 'AbortError', 'URLMismatchError', 'QuotaExceededError', 'TimeoutError',
    'InvalidNodeTypeError', 'DataCloneError'];

const { custom } = require('./inspectable');

class DOMException extends Error {
    #name;

    constructor(message = '', options = 'Error') {
        const { name = 'Error', ...rest } = typeof options === 'object' && options !== null ? options : { name: options };
        super(message, rest);
        this.#name = String(name);
    }
    get name() { return this.#name; }
    get code() { return codes.indexOf(this.#name) + 1; }
    get [Symbol.toStringTag]() { return 'DOMException'; }
    [custom]() { return `DOMException [${this.name}]: ${this.message}`; }
}

codes.forEach((name, index) => {
    const constant = name.replace(/Error$/, '').replace(/(?<=[a-z])(?=[A-Z])/g, '_').toUpperCase() + '_ERR';
    for (const target of [DOMException, DOMException.prototype])
        Object.defineProperty(target, constant, { value: index + 1, enumerable: true });
});

module.exports = DOMException;
