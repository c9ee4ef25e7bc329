/** Objects that tell listeners of what happens, as Node.js has them. */
declare module 'events' {
    namespace EventEmitter {
        type Listener = (...values: any[]) => void;
    }
    class EventEmitter {
        static EventEmitter: typeof EventEmitter;
        static defaultMaxListeners: number;
        static getEventListeners(emitter: EventEmitter, event: string | symbol): EventEmitter.Listener[];
        static getMaxListeners(emitter: EventEmitter): number;
        static setMaxListeners(count: number, ...emitters: EventEmitter[]): void;
        static init(this: EventEmitter): void;
        static listenerCount(emitter: EventEmitter, event: string | symbol): number;
        /** What the next event of that name tells; rejects with an "error" that comes first. */
        static once(emitter: EventEmitter | EventTarget, event: string): Promise<any[]>;

        addListener(event: string | symbol, listener: EventEmitter.Listener): this;
        on(event: string | symbol, listener: EventEmitter.Listener): this;
        once(event: string | symbol, listener: EventEmitter.Listener): this;
        prependListener(event: string | symbol, listener: EventEmitter.Listener): this;
        prependOnceListener(event: string | symbol, listener: EventEmitter.Listener): this;
        removeListener(event: string | symbol, listener: EventEmitter.Listener): this;
        off(event: string | symbol, listener: EventEmitter.Listener): this;
        removeAllListeners(event?: string | symbol): this;
        /** Answers whether anybody listens. */
        emit(event: string | symbol, ...values: any[]): boolean;
        eventNames(): (string | symbol)[];
        listeners(event: string | symbol): EventEmitter.Listener[];
        rawListeners(event: string | symbol): EventEmitter.Listener[];
        listenerCount(event: string | symbol): number;
        getMaxListeners(): number;
        setMaxListeners(count: number): this;
    }
    export = EventEmitter;
}
