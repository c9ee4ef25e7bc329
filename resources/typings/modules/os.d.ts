/** The computer that the application runs on. */
declare module 'os' {
    export const EOL: string;
    export const devNull: string;
    export function arch(): string;
    export function availableParallelism(): number;
    export function cpus(): { model: string; speed: number; times: Record<'user' | 'nice' | 'sys' | 'idle' | 'irq', number> }[];
    export function endianness(): 'BE' | 'LE';
    /** In bytes. */
    export function freemem(): number;
    export function totalmem(): number;
    export function homedir(): string;
    export function hostname(): string;
    export function loadavg(): number[];
    export function machine(): string;
    /** Empty: plug-ins are not told. */
    export function networkInterfaces(): Record<string, never>;
    export function platform(): string;
    export function release(): string;
    export function tmpdir(): string;
    export function type(): string;
    /** In seconds. */
    export function uptime(): number;
    export function userInfo(): { uid: number; gid: number; username: string; homedir: string; shell: string | null };
    export function version(): string;
}
