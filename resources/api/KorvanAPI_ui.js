// "korvan/ui": talks with the user, in windows or on a terminal, wherever the application runs.
//
// Questions answer promises: with null when the user closes them without an answer. The command keeps running until then.
'use strict';

const host = require('host:user-interface');
const { describe, checkKeys, checkText, checkNumber, checkFunction } = require('./support/describe.js');
const { inspectable } = require('../modules/support/inspectable.js');
const { refuseUnknownNames } = require('./support/strict.js');

const STYLES = ['information', 'warning', 'critical'];

/** The options of a question, for which a text alone may stand: its title. */
function optionsOf(options, keys, caller) {
    const given = typeof options === 'string' ? { title: options } : options;
    checkKeys(given, ['title', 'text', ...keys], caller);
    const title = checkText(given.title, `The title of ${caller}`);
    return { ...given, title, text: given.text === undefined ? '' : checkText(given.text, `The text of ${caller}`) };
}

function checkTexts(texts, what) {
    if (!Array.isArray(texts) || texts.length === 0)
        throw new TypeError(`${what} have to be an array with at least one text, but are ${
            Array.isArray(texts) ? 'an empty one' : describe(texts)}.`);
    return Array.from(texts, (text) => checkText(text, `Each of ${what.toLowerCase()}`));
}

function checkOneOf(value, texts, what) {
    if (!texts.includes(value))
        throw new TypeError(`${what} has to be one of ${texts.join(', ')}, but is ${describe(value)}.`);
    return texts.indexOf(value);
}

function answerOf(ask, convert = (answer) => answer) {
    return new Promise((resolve) => { ask((answer) => resolve(answer === null ? null : convert(answer))); });
}

// Who has it may make the objects of this module.
const maker = Symbol('maker');

/** Something that takes a while, as the user sees it. */
class Progress {
    #presentation;
    #total;
    #value = 0;
    #text;
    #isCancelled = false;
    #onCancel = null;

    constructor(key, options) {
        if (key !== maker)
            throw new TypeError('A script cannot make a progress with new. Use progress() or withProgress().');
        const { total = 0, text, cancellable = true, ...rest } = options;
        this.#total = total;
        this.#text = text;
        this.#presentation = host.showProgress({ ...rest, text, cancellable }, () => {
            this.#isCancelled = true;
            this.#onCancel?.();
        });
    }

    /** How much of the total is done. */
    get value() { return this.#value; }
    set value(value) {
        this.#value = checkNumber(value, 'The value of a progress');
        this.#presentation?.setFraction(this.#total > 0 ? value / this.#total : null);
    }

    get total() { return this.#total; }

    get text() { return this.#text; }
    set text(text) {
        this.#text = checkText(text, 'The text of a progress');
        this.#presentation?.setText(text);
    }

    /** Whether the user has asked to stop. Whoever works looks at it now and then. */
    get isCancelled() { return this.#isCancelled; }
    /** Called when the user asks to stop. */
    set onCancel(callback) {
        this.#onCancel = callback === null ? null : checkFunction(callback, 'The onCancel of a progress');
    }
    get onCancel() { return this.#onCancel; }

    /** A promise that lets the application draw and hear its user. Whoever works awaits it between two steps. */
    pause() { return new Promise((resolve) => { host.pause(resolve); }); }

    /** Takes it away. */
    finish() {
        this.#presentation?.finish();
        this.#presentation = undefined;
    }

    get [Symbol.toStringTag]() { return 'Progress'; }
}

inspectable(Progress, ['text', 'value', 'total', 'isCancelled']);
refuseUnknownNames(Progress, 'progress');

function progress(options) {
    const given = optionsOf(options, ['total', 'cancellable'], 'progress()');
    if (given.total !== undefined)
        checkNumber(given.total, 'The total of progress()');
    return new Progress(maker, given);
}

module.exports = {
    Progress,

    /** Tells the user something that goes by itself. */
    message(text) {
        host.showMessage(checkText(text, 'A message'));
    },

    /** Asks the user to choose a button; answers its text. */
    alert(options) {
        const given = optionsOf(options, ['style', 'buttons', 'defaultButton'], 'alert()');
        const buttons = checkTexts(given.buttons ?? ['OK'], 'The buttons');
        const style = checkOneOf(given.style ?? 'information', STYLES, 'The style of an alert');
        const defaultButton = checkOneOf(given.defaultButton ?? buttons[0], buttons, 'The default button');
        return answerOf((done) => host.ask({ ...given, buttons, style, defaultButton }, done), (index) => buttons[index]);
    },

    /** Asks for a text. */
    askText(options) {
        const { value = '', lines = 'one', ...given } = optionsOf(options, ['value', 'lines'], 'askText()');
        checkText(value, 'The value of askText()');
        checkOneOf(lines, ['one', 'many'], 'The lines of askText()');
        return answerOf((done) => host.askText({ ...given, value, hasManyLines: lines === 'many' }, done));
    },

    /** Asks for a number. */
    askNumber(options) {
        const given = optionsOf(options, ['value', 'minimum', 'maximum', 'decimals'], 'askNumber()');
        const { value = 0, minimum = -1e12, maximum = 1e12, decimals = 0 } = given;
        for (const [key, number] of Object.entries({ value, minimum, maximum, decimals }))
            checkNumber(number, `The ${key} of askNumber()`);
        if (minimum > maximum)
            throw new RangeError(`The minimum of askNumber() (${minimum}) is above its maximum (${maximum}).`);
        if (!(Number.isInteger(decimals) && decimals >= 0 && decimals <= 15)) {
            throw new RangeError(
                `The decimals of askNumber() have to be a whole number from 0 to 15, but are ${decimals}.`);
        }
        const rounded = Math.abs(value) < 1e12 ? Number(value.toFixed(decimals)) : value;
        const bounded = Math.min(Math.max(rounded, minimum), maximum);
        return answerOf((done) => host.askNumber({ ...given, value: bounded, minimum, maximum, decimals }, done));
    },

    /** Asks for one of several texts; answers it. */
    askChoice(options) {
        const given = optionsOf(options, ['choices', 'value'], 'askChoice()');
        const choices = checkTexts(given.choices, 'The choices');
        const selected = checkOneOf(given.value ?? choices[0], choices, 'The value of askChoice()');
        return answerOf((done) => host.askChoice({ ...given, choices, selected }, done), (index) => choices[index]);
    },

    /** Shows that something takes a while, until finish() of what this returns is called. */
    progress,

    /** Shows it while work(progress) runs, whatever becomes of that. Answers what work() does, as a promise. */
    async withProgress(options, work) {
        checkFunction(work, 'The work of withProgress()');
        const shown = progress(options);
        try {
            return await work(shown);
        } finally {
            shown.finish();
        }
    },
};
