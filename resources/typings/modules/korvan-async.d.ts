/** Keeps a command running while it waits for something that the application knows nothing of. */
declare module 'korvan/async' {
    /** What keeps a command running until it is ended. */
    export class Hold {
        constructor();
        readonly isEnded: boolean;
        /** Lets the command finish, unless something else keeps it. Ending twice does no harm. */
        end(): void;
    }
    /** Keeps the command running until `end()` of what this returns is called. */
    export function hold(): Hold;
    /** Keeps the command running while `work()` does, whatever becomes of it. Answers what that does. */
    export function whileRunning<Result>(work: () => Result | PromiseLike<Result>): Promise<Result>;
}
