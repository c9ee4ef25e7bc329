// Selectors: short texts that say which layers are meant.
//
//     selector  = path { "," path }
//     path      = step { ( ">" | white space ) step }            a child; anything inside
//     step      = ( type | "*" ) { filter }  |  filter { filter }
//     filter    = "#" id  |  "[" attribute [ operator value ] "]"  |  ":selected"
//     operator  = "=" | "!=" | "^=" | "$=" | "*=" | "<" | "<=" | ">" | ">="
//     attribute = "id" | "name" | "type" | "text" | "image" | "x" | "y" | "width" | "height" | "style." key
//     value     = "…" | '…' | number | word
'use strict';

const { shortened } = require('./describe.js');

const OPERATORS = {
    '=': (actual, expected) => actual === expected,
    '!=': (actual, expected) => actual !== expected,
    '^=': (actual, expected) => String(actual).startsWith(expected),
    '$=': (actual, expected) => String(actual).endsWith(expected),
    '*=': (actual, expected) => String(actual).includes(expected),
    '<=': (actual, expected) => actual <= expected,
    '>=': (actual, expected) => actual >= expected,
    '<': (actual, expected) => actual < expected,
    '>': (actual, expected) => actual > expected,
};

// From an attribute to the key of its column.
const ATTRIBUTES = {
    id: 'id', name: 'name', type: 'type', text: 'text', image: 'image',
    x: 'frame.x', y: 'frame.y', width: 'frame.width', height: 'frame.height',
};

const WORD = /[\p{L}\p{N}_-]+/uy;
const NUMBER = /-?(?:\d+\.?\d*|\.\d+)(?![\p{L}_-])/uy;

class Parser {
    constructor(text) {
        this.text = text;
        this.position = 0;
        this.keys = new Set();
        this.types = new Set();
    }

    fail(expected) {
        const place = this.position < this.text.length
            ? `at character ${this.position + 1} ("${this.text.slice(this.position, this.position + 10)}")` : 'at its end';
        throw new SyntaxError(`The selector "${shortened(this.text, 100)}" is wrong ${place}: ${expected} was expected. `
            + 'Selectors look like text[name="Title"], group > rectangle or #id.');
    }

    skipSpace() {
        const start = this.position;
        while (/\s/.test(this.text[this.position] ?? ''))
            ++this.position;
        return this.position > start;
    }

    take(expression) {
        expression.lastIndex = this.position;
        const match = expression.exec(this.text);
        if (match === null)
            return undefined;
        this.position = expression.lastIndex;
        return match[0];
    }

    takeText(text) {
        const isThere = this.text.startsWith(text, this.position);
        this.position += isThere ? text.length : 0;
        return isThere;
    }

    parse() {
        const paths = [this.parsePath()];
        while (this.takeText(','))
            paths.push(this.parsePath());
        if (this.position < this.text.length)
            this.fail('">", ",", a step or the end');
        return {
            id: idOf(paths),
            keys: [...this.keys],
            types: [...this.types],
            // Which of the rows from `first` on are meant; no more of them than `most`.
            rowsIn(table, first, most) {
                const tests = paths.map((path) => testOfPath(path, table));
                const rows = [];
                for (let row = first; row < table.groups.length && rows.length < most; ++row) {
                    if (tests.some((isMeant) => isMeant(row)))
                        rows.push(row);
                }
                return rows;
            },
        };
    }

    // The steps from the outermost to the innermost; each knows how it stands to the one before.
    parsePath() {
        this.skipSpace();
        const path = [{ filters: this.parseStep(), isChild: false }];
        for (;;) {
            const hasSpace = this.skipSpace();
            const isChild = this.takeText('>');
            const isAtEnd = this.position >= this.text.length || this.text[this.position] === ',';
            if (!isChild && (!hasSpace || isAtEnd))
                return path;
            this.skipSpace();
            path.push({ filters: this.parseStep(), isChild });
        }
    }

    parseStep() {
        const filters = [];
        const start = this.position;
        if (!this.takeText('*')) {
            const type = this.take(WORD);
            if (type !== undefined) {
                this.types.add(type);
                filters.push(this.reading('type', (actual) => actual === type));
            }
        }
        for (;;) {
            if (this.takeText('#'))
                filters.push(this.parseID());
            else if (this.takeText('['))
                filters.push(this.parseCondition());
            else if (this.takeText(':'))
                filters.push(this.parseState());
            else
                break;
        }
        if (this.position === start)
            this.fail('a type of layer, "*", "#", "[" or ":selected"');
        return filters;
    }

    parseID() {
        const id = this.take(WORD) ?? this.fail('the id of a layer');
        return { ...this.reading('id', (actual) => actual === id), id };
    }

    parseState() {
        if (this.take(WORD) !== 'selected')
            this.fail('"selected"');
        return this.reading('selected', (actual) => actual);
    }

    parseCondition() {
        const key = this.parseAttribute();
        this.skipSpace();
        const operator = Object.keys(OPERATORS).find((name) => this.takeText(name));
        if (operator === undefined) {
            this.closeCondition('an operator or "]"');
            return this.reading(key, (actual) => actual !== null);
        }
        this.skipSpace();
        const expected = this.parseValue();
        const isQuoted = `"'`.includes(this.text[this.position - 1]);
        this.closeCondition(isQuoted ? '"]"' : '"]" or quotes around a value of several words');
        const compare = OPERATORS[operator];
        const number = Number(expected);
        return this.reading(key, (actual) => (actual === null ? operator === '!='
            : compare(actual, typeof actual === 'number' ? number : expected)));
    }

    // A filter of the values in a column.
    reading(key, test) {
        this.keys.add(key);
        return { key, test };
    }

    closeCondition(expected) {
        this.skipSpace();
        if (!this.takeText(']'))
            this.fail(expected);
    }

    parseAttribute() {
        this.skipSpace();
        const start = this.position;
        const name = this.take(WORD);
        if (name === 'style' && this.takeText('.')) {
            return `style.${this.take(WORD) ?? this.fail('the key of a style')}`;
        }
        if (name !== undefined && Object.hasOwn(ATTRIBUTES, name))
            return ATTRIBUTES[name];
        this.position = start;
        return this.fail(`one of ${Object.keys(ATTRIBUTES).join(', ')} and style.KEY`);
    }

    // As text: a layer's name may look like a number.
    parseValue() {
        const quote = this.text[this.position];
        if (quote === '"' || quote === "'") {
            const end = this.text.indexOf(quote, this.position + 1);
            if (end < 0)
                this.fail(`a value that ends in ${quote}`);
            const value = this.text.slice(this.position + 1, end);
            this.position = end + 1;
            return value;
        }
        const number = this.take(NUMBER);
        return number ?? this.take(WORD) ?? this.fail('a value');
    }
}

// The id when a selector asks for nothing else; undefined otherwise.
function idOf([path, ...others]) {
    const filters = others.length === 0 && path.length === 1 ? path[0].filters : [];
    return filters.length === 1 ? filters[0].id : undefined;
}

// Whether a row passes the last step of a path. Each step before it is done for all rows at once, groups before what is in
// them, so that the time does not depend on how many ways there are to walk the path.
function testOfPath(path, table) {
    let isMeant = testOfStep(path[0], table);
    for (const step of path.slice(1)) {
        const isInside = rowsInside(isMeant, step.isChild, table.groups);
        const passes = testOfStep(step, table);
        isMeant = (row) => isInside[row] === 1 && passes(row);
    }
    return isMeant;
}

function testOfStep({ filters }, table) {
    const tests = filters.map(({ key, test }) => table.filter(key, test));
    return tests.length === 1 ? tests[0] : (row) => tests.every((passes) => passes(row));
}

// 1 for the rows right in a group that is meant, or, unless only children count, anywhere in one.
function rowsInside(isMeant, isChild, groups) {
    const isInside = new Uint8Array(groups.length);
    for (let row = 0; row < groups.length; ++row) {
        const group = groups[row];
        if (group >= 0 && (isMeant(group) || (!isChild && isInside[group] === 1)))
            isInside[row] = 1;
    }
    return isInside;
}

const compiled = new Map();
const LONGEST_KEPT = 1000;

/**
 * What a selector means: the `id` when that is all that it asks for, the `keys` of the columns that it looks at, the
 * `types` of layers that it names, and `rowsIn(table, first, most)`, the rows of the layers that are meant. A table has
 * `groups`, the row of the group around each layer, or -1, and answers for a key and a test of a value a `filter` of rows.
 * What was asked for lately is kept.
 */
function compileSelector(text) {
    let known = compiled.get(text);
    if (known === undefined) {
        known = new Parser(text).parse();
        if (compiled.size >= 100)
            compiled.clear();
        if (text.length <= LONGEST_KEPT)
            compiled.set(text, known);
    }
    return known;
}

module.exports = { compileSelector };
