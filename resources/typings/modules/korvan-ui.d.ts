/** Talks with the user, in windows or on a terminal. Questions answer null when the user closes them without an answer. */
declare module 'korvan/ui' {
    export interface Message {
        title: string;
        text?: string;
    }
    export interface AlertOptions extends Message {
        /** Without them: OK. */
        buttons?: readonly string[];
        /** The text of one of them; without it the first. */
        defaultButton?: string;
        style?: 'information' | 'warning' | 'critical';
    }
    export interface TextOptions extends Message {
        /** To begin with. */
        value?: string;
        lines?: 'one' | 'many';
    }
    export interface NumberOptions extends Message {
        /** To begin with. */
        value?: number;
        minimum?: number;
        maximum?: number;
        /** 0 without it. */
        decimals?: number;
    }
    export interface ChoiceOptions extends Message {
        choices: readonly string[];
        /** To begin with; without it the first. */
        value?: string;
    }
    export interface ProgressOptions extends Message {
        /** What the value will be when all is done. */
        total?: number;
        cancellable?: boolean;
    }

    /** Something that takes a while, as the user sees it. */
    export class Progress {
        private constructor();
        /** How much of the total is done. */
        value: number;
        readonly total: number;
        text: string;
        /** Whether the user has asked to stop. Whoever works looks at it now and then. */
        readonly isCancelled: boolean;
        /** Called when the user asks to stop. */
        onCancel: (() => void) | null;
        /** A promise that lets the application draw and hear its user. Whoever works awaits it between two steps. */
        pause(): Promise<void>;
        /** Takes it away. */
        finish(): void;
    }

    /** Tells the user something that goes by itself. */
    export function message(text: string): void;
    /** Asks the user to choose a button; answers its text. A text alone stands for the title. */
    export function alert(options: string | AlertOptions): Promise<string | null>;
    export function askText(options: string | TextOptions): Promise<string | null>;
    export function askNumber(options: string | NumberOptions): Promise<number | null>;
    /** Asks for one of several texts; answers it. */
    export function askChoice(options: ChoiceOptions): Promise<string | null>;
    /** Shows that something takes a while, until `finish()` of what this returns is called. */
    export function progress(options: string | ProgressOptions): Progress;
    /** Shows it while `work(progress)` runs, whatever becomes of that. Answers what it does. */
    export function withProgress<Result>(options: string | ProgressOptions,
        work: (progress: Progress) => Result | PromiseLike<Result>): Promise<Result>;
}
