/** Helpers, as Node.js has them. */
declare module 'util' {
    export interface InspectOptions {
        /** Null for all the way down; 2 without it. */
        depth?: number | null;
        colors?: boolean;
        compact?: boolean | number;
        breakLength?: number;
        maxArrayLength?: number | null;
        maxStringLength?: number | null;
        showHidden?: boolean;
        showProxy?: boolean;
        sorted?: boolean | ((first: string, second: string) => number);
        getters?: boolean | 'get' | 'set';
        customInspect?: boolean;
        numericSeparator?: boolean;
    }
    export const inspect: {
        (value: unknown, options?: InspectOptions): string;
        (value: unknown, showHidden?: boolean, depth?: number | null, colors?: boolean): string;
        readonly custom: unique symbol;
        defaultOptions: InspectOptions;
        colors: Record<string, [number, number]>;
        styles: Record<string, string>;
    };
    export function format(format?: unknown, ...values: unknown[]): string;
    export function formatWithOptions(options: InspectOptions, format?: unknown, ...values: unknown[]): string;
    export function stripVTControlCharacters(text: string): string;

    export const promisify: {
        /** A function that answers a promise, from one that calls back with an error or a result. */
        <Arguments extends any[], Result>(
            original: (...values: [...Arguments, (error: any, result?: Result) => void]) => unknown,
        ): (...values: Arguments) => Promise<Result>;
        (original: Function): (...values: any[]) => Promise<any>;
        readonly custom: unique symbol;
    };
    /** A function that calls back with an error or a result, from one that answers a promise. */
    export function callbackify<Arguments extends any[], Result>(
        original: (...values: Arguments) => Promise<Result>,
    ): (...values: [...Arguments, (error: any, result?: Result) => void]) => void;

    export function isDeepStrictEqual(first: unknown, second: unknown): boolean;
    export function inherits(constructor: Function, superConstructor: Function): void;
    export function deprecate<Original extends Function>(original: Original, message: string, code?: string): Original;
    export function debuglog(section: string): (format: string, ...values: unknown[]) => void;
    export function debug(section: string): (format: string, ...values: unknown[]) => void;
    export function log(format: unknown, ...values: unknown[]): void;
    export function toUSVString(text: string): string;

    const encoder: typeof TextEncoder;
    const decoder: typeof TextDecoder;
    export { encoder as TextEncoder, decoder as TextDecoder };

    type Check<Type = unknown> = (value: unknown) => value is Type;
    export const types: {
        isAnyArrayBuffer: Check<ArrayBuffer | SharedArrayBuffer>;
        isArgumentsObject: Check<IArguments>;
        isArrayBuffer: Check<ArrayBuffer>;
        isArrayBufferView: Check<ArrayBufferView>;
        isAsyncFunction: Check<Function>;
        isBigInt64Array: Check<BigInt64Array>;
        isBigIntObject: Check<BigInt>;
        isBigUint64Array: Check<BigUint64Array>;
        isBooleanObject: Check<Boolean>;
        isBoxedPrimitive: Check<object>;
        isDataView: Check<DataView>;
        isDate: Check<Date>;
        isExternal: Check;
        isFloat32Array: Check<Float32Array>;
        isFloat64Array: Check<Float64Array>;
        isGeneratorFunction: Check<GeneratorFunction>;
        isGeneratorObject: Check<Generator>;
        isInt16Array: Check<Int16Array>;
        isInt32Array: Check<Int32Array>;
        isInt8Array: Check<Int8Array>;
        isMap: Check<Map<any, any>>;
        isMapIterator: Check<IterableIterator<any>>;
        isModuleNamespaceObject: Check;
        isNativeError: Check<Error>;
        isNumberObject: Check<Number>;
        isPromise: Check<Promise<any>>;
        isProxy: (value: unknown) => boolean;
        isRegExp: Check<RegExp>;
        isSet: Check<Set<any>>;
        isSetIterator: Check<IterableIterator<any>>;
        isSharedArrayBuffer: Check<SharedArrayBuffer>;
        isStringObject: Check<String>;
        isSymbolObject: Check<Symbol>;
        isTypedArray: Check<Uint8Array | Int8Array | Uint8ClampedArray | Int16Array | Uint16Array | Int32Array | Uint32Array
            | Float32Array | Float64Array | BigInt64Array | BigUint64Array>;
        isUint16Array: Check<Uint16Array>;
        isUint32Array: Check<Uint32Array>;
        isUint8Array: Check<Uint8Array>;
        isUint8ClampedArray: Check<Uint8ClampedArray>;
        isWeakMap: Check<WeakMap<any, any>>;
        isWeakSet: Check<WeakSet<any>>;
        isWebAssemblyCompiledModule: Check;
    };

    /** @deprecated Use Array.isArray. */ export function isArray(value: unknown): value is any[];
    /** @deprecated */ export function isBoolean(value: unknown): value is boolean;
    /** @deprecated */ export function isBuffer(value: unknown): value is Buffer;
    /** @deprecated */ export function isDate(value: unknown): value is Date;
    /** @deprecated */ export function isError(value: unknown): value is Error;
    /** @deprecated */ export function isFunction(value: unknown): value is Function;
    /** @deprecated */ export function isNull(value: unknown): value is null;
    /** @deprecated */ export function isNullOrUndefined(value: unknown): value is null | undefined;
    /** @deprecated */ export function isNumber(value: unknown): value is number;
    /** @deprecated */ export function isObject(value: unknown): boolean;
    /** @deprecated */ export function isPrimitive(value: unknown): boolean;
    /** @deprecated */ export function isRegExp(value: unknown): value is RegExp;
    /** @deprecated */ export function isString(value: unknown): value is string;
    /** @deprecated */ export function isSymbol(value: unknown): value is symbol;
    /** @deprecated */ export function isUndefined(value: unknown): value is undefined;
    /** @deprecated Use Object.assign. */ export function _extend(target: object, source: object): any;
}
