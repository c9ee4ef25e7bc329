/** The application that the script runs in. */
declare module 'process' {
    import EventEmitter = require('events');

    namespace process {
        interface Writer {
            readonly isTTY: boolean;
            readonly writable: boolean;
            /** Logs the text. */
            write(text: unknown): boolean;
        }
        interface Process extends EventEmitter {
            title: string;
            /** The application's, behind a "v". */
            version: string;
            versions: { korvan: string };
            release: { name: string };
            platform: string;
            arch: string;
            pid: number;
            ppid: number;
            execPath: string;
            execArgv: string[];
            argv: string[];
            argv0: string;
            /** A copy: what is set here, nobody else sees. */
            env: Record<string, string | undefined>;
            /** Means nothing. */
            exitCode: number | undefined;
            stdout: Writer;
            stderr: Writer;
            cwd(): string;
            hrtime: {
                (earlier?: [number, number]): [number, number];
                bigint(): bigint;
            };
            uptime(): number;
            memoryUsage(): Record<string, number>;
            nextTick<Values extends unknown[]>(callback: (...values: Values) => void, ...values: Values): void;
            emitWarning(warning: unknown): void;
            /** An error: a script cannot end the application. @deprecated */
            exit(code?: number): never;
            /** An error: a script cannot end the application. @deprecated */
            abort(): never;
            /** An error: a script cannot end processes. @deprecated */
            kill(pid: number, signal?: string | number): never;
            /** An error: it would move the whole application. @deprecated */
            chdir(folder: string): never;
        }
    }
    const process: process.Process;
    export = process;
}
