/** All modules of the application in one. Each is loaded when it is first used. */
declare module 'korvan' {
    export const async: typeof import('korvan/async');
    export const dataSupplier: typeof import('korvan/data-supplier');
    export const dom: typeof import('korvan/dom');
    export const settings: typeof import('korvan/settings');
    export const ui: typeof import('korvan/ui');
    /** The application's version, such as "98.3". */
    export const version: string;
}
