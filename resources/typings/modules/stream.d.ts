/** Streams, as Node.js has them. */
declare module 'stream' {
    import EventEmitter = require('events');
    import { Encoding } from 'buffer';

    type Done = (error?: Error | null) => void;
    type AnyStream = Stream.Readable | Stream.Writable;
    type Source<Element = any> = Iterable<Element> | AsyncIterable<Element> | Promise<Element>;
    type Step = AnyStream | Source | ((source: any) => any);
    interface SignalOptions {
        signal?: AbortSignal;
    }
    interface ConcurrencyOptions extends SignalOptions {
        concurrency?: number;
    }

    class Stream extends EventEmitter {
        constructor(options?: object);
        pipe<Target extends Stream.Writable>(target: Target, options?: { end?: boolean }): Target;
    }
    namespace Stream {
        export { Stream };

        export interface StreamOptions<Self> extends SignalOptions {
            objectMode?: boolean;
            highWaterMark?: number;
            emitClose?: boolean;
            autoDestroy?: boolean;
            construct?(this: Self, done: Done): void;
            destroy?(this: Self, error: Error | null, done: Done): void;
        }
        export interface ReadableOptions<Self = Readable> extends StreamOptions<Self> {
            encoding?: Encoding;
            read?(this: Self, size: number): void;
        }
        export interface WritableOptions<Self = Writable> extends StreamOptions<Self> {
            decodeStrings?: boolean;
            defaultEncoding?: Encoding;
            write?(this: Self, chunk: any, encoding: Encoding, done: Done): void;
            writev?(this: Self, chunks: { chunk: any; encoding: Encoding }[], done: Done): void;
            final?(this: Self, done: Done): void;
        }
        export interface DuplexOptions<Self = Duplex> extends ReadableOptions<Self>, WritableOptions<Self> {
            allowHalfOpen?: boolean;
            readableObjectMode?: boolean;
            writableObjectMode?: boolean;
            readableHighWaterMark?: number;
            writableHighWaterMark?: number;
        }
        export interface TransformOptions<Self = Transform> extends DuplexOptions<Self> {
            transform?(this: Self, chunk: any, encoding: Encoding, done: (error?: Error | null, chunk?: any) => void): void;
            flush?(this: Self, done: (error?: Error | null, chunk?: any) => void): void;
        }

        export class Readable extends Stream implements AsyncIterable<any> {
            constructor(options?: ReadableOptions);
            static from(source: Iterable<any> | AsyncIterable<any>, options?: ReadableOptions): Readable;
            static fromWeb(stream: object, options?: ReadableOptions): Readable;
            static toWeb(stream: Readable): object;
            static wrap(stream: object, options?: ReadableOptions): Readable;
            readable: boolean;
            destroyed: boolean;
            readonly closed: boolean;
            readonly errored: Error | null;
            readonly readableAborted: boolean;
            readonly readableDidRead: boolean;
            readonly readableEncoding: Encoding | null;
            readonly readableEnded: boolean;
            readableFlowing: boolean | null;
            readonly readableHighWaterMark: number;
            readonly readableLength: number;
            readonly readableObjectMode: boolean;
            read(size?: number): any;
            push(chunk: any, encoding?: Encoding): boolean;
            unshift(chunk: any, encoding?: Encoding): void;
            pause(): this;
            resume(): this;
            isPaused(): boolean;
            setEncoding(encoding: Encoding): this;
            unpipe(target?: Writable): this;
            wrap(stream: object): this;
            destroy(error?: Error): this;
            compose(step: Step, options?: SignalOptions): Duplex;
            iterator(options?: { destroyOnReturn?: boolean }): AsyncIterableIterator<any>;
            map(convert: (chunk: any, options: SignalOptions) => any, options?: ConcurrencyOptions): Readable;
            filter(isWanted: (chunk: any, options: SignalOptions) => unknown, options?: ConcurrencyOptions): Readable;
            flatMap(convert: (chunk: any, options: SignalOptions) => any, options?: ConcurrencyOptions): Readable;
            forEach(visit: (chunk: any, options: SignalOptions) => unknown, options?: ConcurrencyOptions): Promise<void>;
            some(isWanted: (chunk: any, options: SignalOptions) => unknown, options?: ConcurrencyOptions): Promise<boolean>;
            every(isWanted: (chunk: any, options: SignalOptions) => unknown, options?: ConcurrencyOptions): Promise<boolean>;
            find(isWanted: (chunk: any, options: SignalOptions) => unknown, options?: ConcurrencyOptions): Promise<any>;
            reduce(add: (sum: any, chunk: any, options: SignalOptions) => any, initial?: any, options?: SignalOptions): Promise<any>;
            drop(count: number, options?: SignalOptions): Readable;
            take(count: number, options?: SignalOptions): Readable;
            toArray(options?: SignalOptions): Promise<any[]>;
            /** @deprecated */
            asIndexedPairs(options?: SignalOptions): Readable;
            [Symbol.asyncIterator](): AsyncIterableIterator<any>;
            _read(size: number): void;
            _destroy(error: Error | null, done: Done): void;
        }

        export interface WritableMembers {
            writable: boolean;
            readonly writableCorked: number;
            readonly writableEnded: boolean;
            readonly writableFinished: boolean;
            readonly writableHighWaterMark: number;
            readonly writableLength: number;
            readonly writableNeedDrain: boolean;
            readonly writableObjectMode: boolean;
            /** False when it is better to wait for "drain". */
            write(chunk: any, done?: Done): boolean;
            write(chunk: any, encoding: Encoding, done?: Done): boolean;
            end(done?: () => void): this;
            end(chunk: any, done?: () => void): this;
            end(chunk: any, encoding: Encoding, done?: () => void): this;
            cork(): void;
            uncork(): void;
            setDefaultEncoding(encoding: Encoding): this;
            _write(chunk: any, encoding: Encoding, done: Done): void;
            _writev?(chunks: { chunk: any; encoding: Encoding }[], done: Done): void;
            _final?(done: Done): void;
        }
        export interface Writable extends WritableMembers {}
        export class Writable extends Stream {
            constructor(options?: WritableOptions);
            static fromWeb(stream: object, options?: WritableOptions): Writable;
            static toWeb(stream: Writable): object;
            destroyed: boolean;
            readonly closed: boolean;
            readonly errored: Error | null;
            readonly writableAborted: boolean;
            destroy(error?: Error): this;
            _destroy(error: Error | null, done: Done): void;
        }

        export interface Duplex extends WritableMembers {}
        export class Duplex extends Readable {
            constructor(options?: DuplexOptions);
            static from(source: Step): Duplex;
            static fromWeb(pair: { readable: object; writable: object }, options?: DuplexOptions): Duplex;
            static toWeb(stream: Readable): { readable: object; writable: object };
            allowHalfOpen: boolean;
        }
        export class Transform extends Duplex {
            constructor(options?: TransformOptions);
            _transform(chunk: any, encoding: Encoding, done: (error?: Error | null, chunk?: any) => void): void;
            _flush?(done: (error?: Error | null, chunk?: any) => void): void;
        }
        export class PassThrough extends Transform {}

        export interface FinishedOptions extends SignalOptions {
            error?: boolean;
            readable?: boolean;
            writable?: boolean;
            cleanup?: boolean;
        }
        /** Calls back when the stream has ended. Answers a function that stops listening. */
        export function finished(stream: AnyStream, done: Done): () => void;
        export function finished(stream: AnyStream, options: FinishedOptions, done: Done): () => void;
        /** Lets each step read what the one before writes; calls back at the end. */
        export function pipeline(steps: readonly Step[], done: Done): any;
        export function pipeline(source: Step, ...stepsAndDone: [...Step[], Done]): any;
        export function compose(...steps: Step[]): Duplex;
        export function addAbortSignal<Kind extends AnyStream>(signal: AbortSignal, stream: Kind): Kind;
        export function destroy(stream: AnyStream, error?: Error): void;
        export function isDestroyed(stream: AnyStream): boolean | null;
        export function isDisturbed(stream: AnyStream): boolean;
        export function isErrored(stream: AnyStream): boolean;
        export function isReadable(stream: AnyStream): boolean | null;
        export function isWritable(stream: AnyStream): boolean | null;
        export function getDefaultHighWaterMark(objectMode: boolean): number;
        export function setDefaultHighWaterMark(objectMode: boolean, size: number): void;
        export const promises: {
            finished(stream: AnyStream, options?: FinishedOptions): Promise<void>;
            pipeline(source: Step, ...steps: Step[]): Promise<any>;
            pipeline(steps: readonly Step[], options?: SignalOptions & { end?: boolean }): Promise<any>;
        };
    }
    export = Stream;
}
