/** The parameters of URLs, as Node.js reads and writes them. */
declare module 'querystring' {
    type Values = Record<string, string | number | boolean | bigint | readonly (string | number | boolean | bigint)[] | null | undefined>;
    type Parsed = Record<string, string | string[] | undefined>;
    interface ParseOptions {
        maxKeys?: number;
        decodeURIComponent?(text: string): string;
    }
    export function parse(text: string, separator?: string, equals?: string, options?: ParseOptions): Parsed;
    export function decode(text: string, separator?: string, equals?: string, options?: ParseOptions): Parsed;
    export function stringify(values?: Values, separator?: string, equals?: string): string;
    export function encode(values?: Values, separator?: string, equals?: string): string;
    export function escape(text: string): string;
    export function unescape(text: string): string;
}
