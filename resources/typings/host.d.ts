// What the application hands to scripts. Made by `./dev typings` from the tables that say what scripts may
// use; changes are lost.

declare namespace Korvan {
    interface CommandContext {
        readonly scriptPath: string;
        readonly scriptURL: string;
        readonly command: Command;
        readonly plugin: Plugin;
    }

    interface DocumentContext {
        readonly document: Document;
        readonly selection: Layer[];
    }

    interface Command {
        identifier(): string | null;
        name(): string | null;
        handlers(): Record<string, string>;
        shortcut(): string | null;
        shortcutKey(): string;
        shortcutModifiers(): number;
        scope(): number;
        hasRunHandler(): boolean;
        canAppearInMenuBar(): boolean;
        commandSpecifier(): string | null;
        metadata(): CommandMetadata;
        pluginBundle(): Plugin | null;
        stayRunning(): boolean;
        setStayRunning(stayRunning: boolean): void;
        print(value: unknown): void;
        error(value: unknown): void;
        log_atLevel(value: unknown, level: string): void;
        logString(): string;
        valueForKey_onLayer_forPluginIdentifier(key: string | null, layer: Layer, pluginIdentifier: string | null): any;
        valueForKey_onDocument_forPluginIdentifier(key: string | null, document: Document, pluginIdentifier: string | null): any;
        valueForKey_onLayer(key: string | null, layer: Layer): any;
        valueForKey_onDocument(key: string | null, document: Document): any;
        setValue_forKey_onLayer_forPluginIdentifier(value: JSONValue, key: string | null, layer: Layer, pluginIdentifier: string | null): void;
        setValue_forKey_onDocument_forPluginIdentifier(value: JSONValue, key: string | null, document: Document, pluginIdentifier: string | null): void;
        setValue_forKey_onObject_forPluginIdentifier(value: JSONValue, key: string | null, object: Layer | Document, pluginIdentifier: string | null): void;
        setValue_forKey_onLayer(value: JSONValue, key: string | null, layer: Layer): void;
        setValue_forKey_onDocument(value: JSONValue, key: string | null, document: Document): void;
        pluginBundleIdentifierForMetadata(): string | null;
    }

    interface Plugin {
        identifier(): string | null;
        name(): string | null;
        version(): string | null;
        versionedIdentifier(): string;
        pluginDescription(): string | null;
        author(): string | null;
        authorEmail(): string | null;
        homepageURL(): string | null;
        updatingInfoURL(): string | null;
        compatibleVersion(): string | null;
        maximumCompatibleVersion(): string | null;
        isCompatible(): boolean;
        isEnabled(): boolean;
        suppliesData(): boolean;
        url(): string | null;
        urlForResourceNamed(name: string): string | null;
        commands(): Record<string, Command>;
        menuDescription(): MenuDescription;
    }

    interface Document {
        name(): string;
        setName(name: string): void;
        userInfo(): UserInfo | null;
        layers(): Layer[];
        allLayers(): Layer[];
        layerWithID(id: string): Layer | null;
        selection(): Layer[];
        setSelection(layers: readonly Layer[]): void;
        addLayer(values: LayerValues): Layer;
        insertLayer(values: LayerValues, parent: Layer | null, index: number): Layer;
        layerTypes(): string[];
        styleKeys(type: string): string[];
    }

    interface Layer {
        id(): string;
        name(): string;
        setName(name: string): void;
        type(): string;
        frame(): Frame;
        setFrame(frame: Partial<Frame>): void;
        style(): Style;
        setStyle(style: Style): void;
        text(): string | null;
        setText(text: string | null): void;
        image(): string | null;
        setImage(image: string | null): void;
        userInfo(): UserInfo | null;
        parent(): Layer | null;
        document(): Document | null;
        layers(): Layer[];
        addLayer(values: LayerValues): Layer;
        remove(): void;
        moveToIndex(index: number): void;
        moveTo(parent: Layer | null, index: number): void;
        duplicate(): Layer;
    }
}
