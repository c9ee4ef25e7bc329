// What the tests of a plug-in find, in its folder "tests", beside what its scripts do.

/** Says which tests belong together. */
declare const describe: KorvanTesting.Suite;
/** Says what one test is called and what it does. */
declare const it: KorvanTesting.Test;
declare const test: KorvanTesting.Test;
/** Called before each test of the same `describe`. */
declare function beforeEach(body: () => unknown): void;
/** Called after each test of the same `describe`. */
declare function afterEach(body: () => unknown): void;
declare function expect(value: any, message?: string): KorvanTesting.Expectation;
declare const assert: KorvanTesting.Assert;

declare namespace KorvanTesting {
    interface Suite {
        (title: string, body: () => void): void;
        only(title: string, body: () => void): void;
        skip(title: string, body: () => void): void;
    }
    interface Test {
        (title: string, body?: () => unknown): void;
        only(title: string, body: () => unknown): void;
        skip(title: string, body?: () => unknown): void;
    }

    /** Words that mean nothing by themselves, those that change the meaning, and the checks. */
    interface Expectation {
        readonly to: Expectation;
        readonly be: Expectation;
        readonly been: Expectation;
        readonly is: Expectation;
        readonly that: Expectation;
        readonly which: Expectation;
        readonly and: Expectation;
        readonly has: Expectation;
        readonly have: Expectation;
        readonly with: Expectation;
        readonly at: Expectation;
        readonly of: Expectation;
        readonly same: Expectation;
        readonly but: Expectation;
        readonly does: Expectation;
        readonly still: Expectation;
        readonly not: Expectation;
        readonly deep: Expectation;
        readonly nested: Expectation;
        readonly own: Expectation;
        readonly ordered: Expectation;
        readonly any: Expectation;
        readonly all: Expectation;
        readonly ok: Expectation;
        readonly true: Expectation;
        readonly false: Expectation;
        readonly null: Expectation;
        readonly undefined: Expectation;
        readonly NaN: Expectation;
        readonly exist: Expectation;
        readonly empty: Expectation;
        readonly finite: Expectation;
        readonly frozen: Expectation;
        readonly sealed: Expectation;
        readonly extensible: Expectation;
        readonly length: Expectation & ((length: number) => Expectation);
        readonly a: Expectation & ((type: string) => Expectation);
        readonly an: Expectation & ((type: string) => Expectation);
        readonly include: Expectation & ((value: any) => Expectation);
        readonly contain: Expectation & ((value: any) => Expectation);
        equal(value: any, message?: string): Expectation;
        eql(value: any, message?: string): Expectation;
        above(value: number | Date): Expectation;
        least(value: number | Date): Expectation;
        below(value: number | Date): Expectation;
        most(value: number | Date): Expectation;
        within(least: number | Date, most: number | Date): Expectation;
        closeTo(value: number, delta: number): Expectation;
        instanceOf(constructor: Function): Expectation;
        property(name: string | symbol, value?: any): Expectation;
        lengthOf(length: number): Expectation;
        match(expression: RegExp): Expectation;
        string(part: string): Expectation;
        keys(...names: any[]): Expectation;
        members(values: readonly any[]): Expectation;
        oneOf(values: readonly any[]): Expectation;
        satisfy(isFine: (value: any) => boolean): Expectation;
        throw(expected?: Function | Error | RegExp | string, message?: RegExp | string): Expectation;
        change(subject: any, property?: string): Expectation;
        increase(subject: any, property?: string): Expectation;
        decrease(subject: any, property?: string): Expectation;
    }

    interface Assert {
        (condition: unknown, message?: string): void;
        [check: string]: (...values: any[]) => void;
    }
}

/** The application that `korvan-plugins test` stands in for. */
declare module 'korvan/testing' {
    export interface Finished {
        returnValue: any;
        log: LogEntry[];
        /** Whether something keeps the command running. */
        isRunning: boolean;
    }
    export interface LogEntry {
        level: 'log' | 'error';
        text: string;
    }
    export interface CannedAnswer {
        status?: number;
        headers?: Record<string, string>;
        /** What is no text becomes JSON. */
        body?: unknown;
        /** What goes wrong instead. */
        error?: string | null;
    }

    /** Runs a command of the plug-in in a session of its own. Rejects when the command throws. */
    export function runCommand(identifier: string, options?: { handler?: string; context?: object }): Promise<Finished>;
    /**
     * Asks a supplier of the plug-in, by its id or name, for values for layers (all of the document without them): a text
     * or null for each. Runs the plug-in's handlers for "Startup" first, unless they have run. Rejects when it fails.
     */
    export function supplyData(supplier: string, layers?: readonly object[]): Promise<(string | null)[]>;
    /** Makes a document from its values, or from a JSON file beside the test, the open one. */
    export function openDocument(document?: object | string): void;
    /** The document as plain values. */
    export function snapshot(): any;
    export function undo(): void;
    export function redo(): void;
    /** What the user's Undo is called. */
    export function undoText(): string;
    /** What commands have logged. */
    export function log(): LogEntry[];
    export function clearLog(): void;
    /** The time for timers. */
    export const clock: {
        now(): number;
        advance(milliseconds: number): Promise<void>;
    };
    export const user: {
        /** Answers for the next questions: a button's or choice's text, a text, a number, null to close it. */
        answer(...answers: (string | number | null)[]): void;
        /** Asks to stop what shows a progress. */
        cancelProgress(): void;
        /** What the user has seen. */
        readonly shown: any[];
    };
    export const network: {
        /** What `fetch` of a URL gets. */
        answer(url: string | URL, answer?: CannedAnswer): void;
        /** What was sent. */
        readonly requests: any[];
    };

    const suites: KorvanTesting.Suite;
    const tests: KorvanTesting.Test;
    const hook: (body: () => unknown) => void;
    const expectation: typeof expect;
    const assertion: KorvanTesting.Assert;
    export { suites as describe, tests as it, tests as test, hook as beforeEach, hook as afterEach, expectation as expect,
        assertion as assert };
}
