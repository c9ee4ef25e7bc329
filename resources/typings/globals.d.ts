// What every script finds without asking.

/** Logs a value. */
declare function print(value?: unknown): void;
/** Logs values as `console.log` does. */
declare function log(...values: unknown[]): void;

/** A module by its name, or a file of the plug-in by a path that begins with "./" or "../". */
declare function require(name: string): any;
/** In required files only, as `exports`, `__filename` and `__dirname` are. */
declare var module: { id: string; filename: string; exports: any; loaded: boolean };
declare var exports: any;
/** The path of this file. */
declare var __filename: string;
/** The path of this file's folder. */
declare var __dirname: string;

/** The command that runs, as `context.command`. */
declare var __command: Korvan.Command;

/** What `setTimeout` and its kin answer. */
type TimerID = number;
declare function setTimeout(callback: (...values: any[]) => void, delay?: number, ...values: unknown[]): TimerID;
declare function setInterval(callback: (...values: any[]) => void, delay?: number, ...values: unknown[]): TimerID;
declare function setImmediate(callback: (...values: any[]) => void, ...values: unknown[]): TimerID;
declare function clearTimeout(id: TimerID | undefined): void;
declare function clearInterval(id: TimerID | undefined): void;
declare function clearImmediate(id: TimerID | undefined): void;
declare function queueMicrotask(callback: () => void): void;

/** Output goes to the command's log. */
interface Console {
    log(...values: unknown[]): void;
    info(...values: unknown[]): void;
    debug(...values: unknown[]): void;
    warn(...values: unknown[]): void;
    error(...values: unknown[]): void;
    dir(value?: unknown): void;
    dirxml(...values: unknown[]): void;
    /** Leaves the log as it is. */
    clear(): void;
    /** Logs the values with the stack. */
    trace(...values: unknown[]): void;
    assert(condition?: unknown, ...values: unknown[]): void;
    time(label?: string): void;
    timeLog(label?: string, ...values: unknown[]): void;
    timeEnd(label?: string): void;
    count(label?: string): void;
    countReset(label?: string): void;
    group(...values: unknown[]): void;
    groupCollapsed(...values: unknown[]): void;
    groupEnd(): void;
    table(data?: unknown, columns?: readonly string[]): void;
}
declare var console: Console;

declare var process: import('process').Process;

declare var Buffer: typeof import('buffer').Buffer;
type Buffer = import('buffer').Buffer;
