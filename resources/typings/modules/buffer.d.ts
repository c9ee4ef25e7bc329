/** Bytes, as Node.js has them. */
declare module 'buffer' {
    export type Encoding = 'ascii' | 'utf8' | 'utf-8' | 'utf16le' | 'utf-16le' | 'ucs2' | 'ucs-2' | 'base64' | 'base64url' | 'latin1'
        | 'binary' | 'hex';

    export class Buffer extends Uint8Array<ArrayBuffer> {
        private constructor();
        static from(text: string, encoding?: Encoding): Buffer;
        static from(bytes: ArrayBuffer | SharedArrayBuffer, offset?: number, length?: number): Buffer;
        static from(bytes: ArrayLike<number> | Iterable<number>): Buffer;
        static alloc(size: number, fill?: string | number | Uint8Array, encoding?: Encoding): Buffer;
        static allocUnsafe(size: number): Buffer;
        static allocUnsafeSlow(size: number): Buffer;
        static byteLength(value: string | ArrayBuffer | ArrayBufferView, encoding?: Encoding): number;
        static compare(first: Uint8Array, second: Uint8Array): -1 | 0 | 1;
        static concat(parts: readonly Uint8Array[], length?: number): Buffer;
        static isBuffer(value: unknown): value is Buffer;
        static isEncoding(encoding: unknown): encoding is Encoding;
        static poolSize: number;

        readonly parent: ArrayBuffer;
        readonly offset: number;
        compare(other: Uint8Array, start?: number, end?: number, ownStart?: number, ownEnd?: number): -1 | 0 | 1;
        /** Answers how many bytes were copied. */
        copy(target: Uint8Array, targetStart?: number, start?: number, end?: number): number;
        equals(other: Uint8Array): boolean;
        fill(value: string | number | Uint8Array, start?: number, end?: number, encoding?: Encoding): this;
        fill(value: string | number | Uint8Array, encoding?: Encoding): this;
        includes(value: string | number | Uint8Array, start?: number, encoding?: Encoding): boolean;
        indexOf(value: string | number | Uint8Array, start?: number, encoding?: Encoding): number;
        lastIndexOf(value: string | number | Uint8Array, start?: number, encoding?: Encoding): number;
        inspect(): string;
        /** Of the same memory, as `subarray`. */
        slice(start?: number, end?: number): Buffer;
        subarray(start?: number, end?: number): Buffer;
        swap16(): this;
        swap32(): this;
        swap64(): this;
        toJSON(): { type: 'Buffer'; data: number[] };
        toLocaleString(encoding?: any, start?: any, end?: number): string;
        toString(encoding?: Encoding, start?: number, end?: number): string;
        /** Answers how many bytes were written. */
        write(text: string, encoding?: Encoding): number;
        write(text: string, offset: number, encoding?: Encoding): number;
        write(text: string, offset: number, length: number, encoding?: Encoding): number;

        readInt8(offset?: number): number;
        writeInt8(value: number, offset?: number): number;
        readInt16LE(offset?: number): number;
        writeInt16LE(value: number, offset?: number): number;
        readInt16BE(offset?: number): number;
        writeInt16BE(value: number, offset?: number): number;
        readInt32LE(offset?: number): number;
        writeInt32LE(value: number, offset?: number): number;
        readInt32BE(offset?: number): number;
        writeInt32BE(value: number, offset?: number): number;
        readUInt8(offset?: number): number;
        writeUInt8(value: number, offset?: number): number;
        readUInt16LE(offset?: number): number;
        writeUInt16LE(value: number, offset?: number): number;
        readUInt16BE(offset?: number): number;
        writeUInt16BE(value: number, offset?: number): number;
        readUInt32LE(offset?: number): number;
        writeUInt32LE(value: number, offset?: number): number;
        readUInt32BE(offset?: number): number;
        writeUInt32BE(value: number, offset?: number): number;
        readUint8(offset?: number): number;
        writeUint8(value: number, offset?: number): number;
        readUint16LE(offset?: number): number;
        writeUint16LE(value: number, offset?: number): number;
        readUint16BE(offset?: number): number;
        writeUint16BE(value: number, offset?: number): number;
        readUint32LE(offset?: number): number;
        writeUint32LE(value: number, offset?: number): number;
        readUint32BE(offset?: number): number;
        writeUint32BE(value: number, offset?: number): number;
        readFloatLE(offset?: number): number;
        writeFloatLE(value: number, offset?: number): number;
        readFloatBE(offset?: number): number;
        writeFloatBE(value: number, offset?: number): number;
        readDoubleLE(offset?: number): number;
        writeDoubleLE(value: number, offset?: number): number;
        readDoubleBE(offset?: number): number;
        writeDoubleBE(value: number, offset?: number): number;
        readBigInt64LE(offset?: number): bigint;
        writeBigInt64LE(value: bigint, offset?: number): number;
        readBigInt64BE(offset?: number): bigint;
        writeBigInt64BE(value: bigint, offset?: number): number;
        readBigUint64LE(offset?: number): bigint;
        writeBigUint64LE(value: bigint, offset?: number): number;
        readBigUint64BE(offset?: number): bigint;
        writeBigUint64BE(value: bigint, offset?: number): number;
        readBigUInt64LE(offset?: number): bigint;
        writeBigUInt64LE(value: bigint, offset?: number): number;
        readBigUInt64BE(offset?: number): bigint;
        writeBigUInt64BE(value: bigint, offset?: number): number;
        readIntLE(offset: number, byteLength: number): number;
        writeIntLE(value: number, offset: number, byteLength: number): number;
        readIntBE(offset: number, byteLength: number): number;
        writeIntBE(value: number, offset: number, byteLength: number): number;
        readUIntLE(offset: number, byteLength: number): number;
        writeUIntLE(value: number, offset: number, byteLength: number): number;
        readUIntBE(offset: number, byteLength: number): number;
        writeUIntBE(value: number, offset: number, byteLength: number): number;
        readUintLE(offset: number, byteLength: number): number;
        writeUintLE(value: number, offset: number, byteLength: number): number;
        readUintBE(offset: number, byteLength: number): number;
        writeUintBE(value: number, offset: number, byteLength: number): number;
    }

    /** @deprecated */
    export const SlowBuffer: (size: number) => Buffer;
    export const INSPECT_MAX_BYTES: number;
    export const kMaxLength: number;
    export const constants: { MAX_LENGTH: number; MAX_STRING_LENGTH: number };
    export function isAscii(bytes: ArrayBuffer | ArrayBufferView): boolean;
    export function isUtf8(bytes: ArrayBuffer | ArrayBufferView): boolean;
    export function atob(base64: string): string;
    export function btoa(text: string): string;
}
