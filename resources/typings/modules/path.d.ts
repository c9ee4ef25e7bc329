/** Paths of files, as texts. */
declare module 'path' {
    namespace path {
        interface ParsedPath {
            root: string;
            dir: string;
            base: string;
            ext: string;
            name: string;
        }
        interface Path {
            basename(path: string, extension?: string): string;
            dirname(path: string): string;
            extname(path: string): string;
            format(parts: Partial<ParsedPath>): string;
            isAbsolute(path: string): boolean;
            join(...parts: string[]): string;
            normalize(path: string): string;
            parse(path: string): ParsedPath;
            relative(from: string, to: string): string;
            resolve(...parts: string[]): string;
            toNamespacedPath(path: string): string;
            readonly delimiter: string;
            readonly sep: string;
            readonly posix: Path;
            /** Not there: the application's paths are those of its own system. */
            readonly win32: null;
        }
    }
    const path: path.Path;
    export = path;
}
