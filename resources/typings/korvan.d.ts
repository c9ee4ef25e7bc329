declare namespace Korvan {
    /**
     * What a handler is given, for a command that runs on a document. Keys that only this call of it has, such as those of
     * `korvan-plugins run --context`, are named by their types: `Korvan.Context<{ columns?: number }>`.
     */
    type Context<Keys extends object = {}> = CommandContext & DocumentContext & Keys;

    /** What a handler is given when there may be no document: for commands of the scope "application", and for actions. */
    type ApplicationContext<Keys extends object = {}> = CommandContext & Partial<DocumentContext> & Keys;

    type LayerType = 'group' | 'rectangle' | 'oval' | 'text' | 'image';

    /** In points. */
    interface Frame {
        x: number;
        y: number;
        width: number;
        height: number;
    }

    /** Colours are texts such as "#FFCC00". */
    interface Style {
        /** From 0 to 1. */
        opacity?: number;
        fill?: string;
        border?: string;
        borderWidth?: number;
        /** Of rectangles and images. */
        cornerRadius?: number;
        /** Of texts, as all that follow. */
        fontFamily?: string;
        fontSize?: number;
        fontWeight?: string | number;
        textAlign?: string;
    }

    /** What `addLayer` of the application's own objects makes a layer of. */
    interface LayerValues {
        type: string;
        name?: string;
        frame?: Partial<Frame>;
        style?: Style;
        text?: string;
        image?: string;
    }

    type JSONValue = string | number | boolean | null | readonly JSONValue[] | { readonly [key: string]: JSONValue };

    /** What plug-ins keep, under their identifiers. */
    interface UserInfo {
        [pluginIdentifier: string]: { [key: string]: JSONValue };
    }

    /** A command as its manifest describes it, with all defaults. */
    interface CommandMetadata {
        identifier?: string;
        name?: string;
        handlers: Record<string, string>;
        shortcut?: string;
        script?: string;
        scope?: 'application';
    }

    interface MenuDescription {
        title?: string;
        isRoot?: boolean;
        items?: (string | MenuDescription)[];
    }
}
