/** Values that a plug-in keeps for itself, for good, and values that it keeps on layers and documents. */
declare module 'korvan/settings' {
    namespace settings {
        /** Values under keys. What is read is a copy. */
        interface Settings {
            /** The value, or `fallback` when there is none. */
            get(key: string, fallback: number): number;
            get(key: string, fallback: string): string;
            get(key: string, fallback: boolean): boolean;
            get(key: string, fallback?: unknown): any;
            has(key: string): boolean;
            set(key: string, value: Value): void;
            /** Sets all values of an object at once, in one write. */
            update(values: Plain): void;
            /** Answers whether there was such a value. */
            delete(key: string): boolean;
            clear(): void;
            keys(): string[];
            /** All values in a new object. */
            all(): Record<string, any>;
        }
        /** What JSON can hold. */
        type Value = string | number | boolean | null | readonly Value[] | Plain;
        /** No function, nor an instance of a class such as a `Date` or a `Map`. */
        type Plain = {
            [key: string]: any;
            [Symbol.iterator]?: never;
            call?: NoFunction;
            getTime?: NoFunction;
            then?: NoFunction;
        };
        type NoFunction = string | number | boolean | null | readonly unknown[];
    }
    const settings: settings.Settings & {
        /** The values that this plug-in keeps on a layer or a document. */
        of(owner: Owner): settings.Settings;
    };
    type Owner = import('korvan/dom').Layer | import('korvan/dom').Document | Korvan.Layer | Korvan.Document;
    export = settings;
}
