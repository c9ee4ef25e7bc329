/** The open documents and their layers, as objects that are always up to date. */
declare module 'korvan/dom' {
    import LayerType = Korvan.LayerType;
    import Frame = Korvan.Frame;
    import Style = Korvan.Style;

    /** `text[name^="Title"]`, `group > rectangle`, `#id` and the like, or a function that is called with each layer. */
    export type Selector = string | ((layer: Layer) => unknown);

    export interface NewLayer {
        type: LayerType;
        name?: string;
        frame?: Partial<Frame>;
        style?: Style;
        text?: string;
        image?: string | null;
        /** Of a group. */
        children?: readonly NewLayer[];
        /** Among the layers there, bottom first; without one it is on top. */
        index?: number;
    }

    export class Document implements Iterable<Layer> {
        private constructor();
        /** The application's own object: what `context.document` is. */
        readonly hostObject: Korvan.Document;
        name: string;
        /** The layers at the top level, bottom first. The array is of this moment; the layers are live. */
        readonly children: readonly Layer[];
        /** All layers, each group before those in it. */
        readonly layers: readonly Layer[];
        get selection(): readonly Layer[];
        set selection(layers: readonly (Layer | Korvan.Layer)[]);
        layerWithID(id: string): Layer | null;
        /** The first layer that is meant; null when there is none. */
        find(selector: Selector): Layer | null;
        findAll(selector: Selector): Layer[];
        create(values: NewLayer): Layer;
        [Symbol.iterator](): ArrayIterator<Layer>;
        toString(): string;
        toJSON(): { name: string; children: readonly Layer[] };
    }

    export class Layer implements Iterable<Layer> {
        private constructor();
        /** The application's own object: what `context.selection` holds. */
        readonly hostObject: Korvan.Layer;
        readonly id: string;
        readonly type: LayerType;
        name: string;
        /** In points. Each key can be assigned to; so can the whole, whose missing keys stay. */
        get frame(): Frame;
        set frame(frame: Partial<Frame>);
        /** Each key can be assigned to and deleted; assigning the whole replaces all of it. */
        style: Style;
        /** Of a text layer; null for all others. */
        get text(): string | null;
        set text(text: string);
        /** The URL of an image layer's picture; null when it has none, and for all others. */
        image: string | null;
        /** Of a group, bottom first; empty for all others. The array is of this moment; the layers are live. */
        readonly children: readonly Layer[];
        /** The group that it is in; null at the top level, and for a removed layer. */
        readonly group: Layer | null;
        /** The group or document that it is in; null for a removed layer. */
        readonly parent: Layer | Document | null;
        /** Null for a removed layer. */
        readonly document: Document | null;
        /** Among its siblings, bottom first; -1 for a removed layer. */
        readonly index: number;
        /** Whether it is in no document any more. */
        readonly isRemoved: boolean;
        isSelected: boolean;
        /** Of a group. */
        create(values: NewLayer): Layer;
        /** A copy with everything in it, right above this one. */
        duplicate(): Layer;
        /** Takes it out of its document, with everything in it. */
        remove(): void;
        /** Moves it into a group or its document, to that index among the layers there; without one to the top. */
        moveTo(parent: Layer | Document | Korvan.Layer | Korvan.Document, index?: number): void;
        /** The first layer inside that is meant; null when there is none. */
        find(selector: Selector): Layer | null;
        findAll(selector: Selector): Layer[];
        /** All layers inside, each group before those in it. */
        [Symbol.iterator](): Generator<Layer, void, unknown>;
        toString(): string;
        toJSON(): NewLayer & { id: string };
    }

    /** All open documents. */
    export function documents(): readonly Document[];
    /** The document that the command runs for, or else the one that the user works in; null without any. */
    export function activeDocument(): Document | null;
    /** The layer or document of this module for one of the application's own. */
    export function from(document: Korvan.Document | Document): Document;
    export function from(layer: Korvan.Layer | Layer): Layer;
}
