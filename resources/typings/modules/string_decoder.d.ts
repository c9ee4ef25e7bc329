/** Texts from bytes that come in pieces. */
declare module 'string_decoder' {
    export class StringDecoder {
        constructor(encoding?: import('buffer').Encoding);
        /** What is whole; the bytes of a character that is not yet wait. */
        write(bytes: Uint8Array): string;
        end(bytes?: Uint8Array): string;
        text(bytes: Uint8Array, offset: number): string;
        fillLast(bytes: Uint8Array): string | undefined;
    }
}
