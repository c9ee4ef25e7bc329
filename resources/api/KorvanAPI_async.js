// "korvan/async": keeps a command running while it waits for something that the application knows nothing of.
//
// Timers, promises that a handler returns, questions of "korvan/ui" and the like keep a command running by themselves.
'use strict';

const keepRunning = require('host:keep-running');
const { checkFunction } = require('./support/describe.js');

/** What keeps a command running until it is ended. */
class Hold {
    #release;

    constructor() { this.#release = keepRunning(); }

    get isEnded() { return this.#release === undefined; }

    /** Lets the command finish, unless something else keeps it. Ending twice does no harm. */
    end() {
        const release = this.#release;
        this.#release = undefined;
        release?.();
    }

    get [Symbol.toStringTag]() { return 'Hold'; }
}

module.exports = {
    Hold,

    /** Keeps the command running until end() of what this returns is called. */
    hold: () => new Hold(),

    /** Keeps the command running while work() does, whatever becomes of it. Answers what work() does, as a promise. */
    async whileRunning(work) {
        checkFunction(work, 'What whileRunning() runs');
        const hold = new Hold();
        try {
            return await work();
        } finally {
            hold.end();
        }
    },
};
