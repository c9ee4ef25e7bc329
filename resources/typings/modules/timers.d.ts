/** The globals of those names. */
declare module 'timers' {
    const globals: {
        setTimeout: typeof setTimeout;
        setInterval: typeof setInterval;
        setImmediate: typeof setImmediate;
        clearTimeout: typeof clearTimeout;
        clearInterval: typeof clearInterval;
        clearImmediate: typeof clearImmediate;
        promises: {
            /** A promise of the value, some milliseconds later. */
            setTimeout<Value = void>(delay?: number, value?: Value): Promise<Value>;
            setImmediate<Value = void>(value?: Value): Promise<Value>;
        };
    };
    export = globals;
}
