/** Offers texts and images that the application puts into layers. For plug-ins whose manifest says "suppliesData". */
declare module 'korvan/data-supplier' {
    import { Layer } from 'korvan/dom';

    export interface Demand {
        readonly layers: readonly Layer[];
        readonly count: number;
    }
    /** Texts and numbers for texts, whole paths and URLs for images; without one a layer stays as it is. */
    export type Value = string | number | boolean | null | undefined;
    /** A value for each layer, or values under the layers' ids. */
    export type Answer = readonly Value[] | Record<string, Value> | ReadonlyMap<string | Layer, Value>;
    export interface Supplier {
        /** For the user. */
        name: string;
        kind: 'text' | 'image';
        supply(demand: Demand): Answer | PromiseLike<Answer>;
        /** Tells the suppliers of a plug-in apart: the name, unless there are two of it. */
        id?: string;
    }
    /** Offers values to the application. The command keeps running until it has taken all back. */
    export function register(supplier: Supplier): void;
    /** Takes an offer back. Answers whether there was one of that id. */
    export function unregister(id: string): boolean;
}
