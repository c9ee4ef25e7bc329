/** The global of that name. */
declare module 'console' {
    const output: Console;
    export = output;
}
