// "korvan/dom": the open documents and their layers, as objects that are always up to date.
//
// Behind each of them stands an object of the application's, the one that a handler finds in context.document and
// context.selection. Wherever this module takes a layer or a document, it takes either; the same one is always the same
// object here. Every change reaches the application at once, and all changes of one run of a command are undone together.
'use strict';

const host = require('host:documents');
const { describe, shortened, suggestion, checkText } = require('./support/describe.js');
const { compileSelector } = require('./support/selector.js');
const { LayerTable } = require('./support/layer-table.js');
const {
    checkStyle, checkStyleKey, checkStyleValue, checkFrame, checkFrameValue, checkIndex, checkContent, checkValues,
} = require('./support/layer-values.js');
const { liveView } = require('./support/live-view.js');
const { inspectable, inspectableAs } = require('../modules/support/inspectable.js');
const named = require('../modules/support/names.js');
const { refuseUnknownNames } = require('./support/strict.js');

// From the application's object to ours; it keeps neither of them.
const known = new WeakMap();
// Who has it may make the objects of this module.
const maker = Symbol('maker');

const hasOperations = (value, ...names) => typeof value === 'object' && value !== null
    && names.every((name) => typeof value[name] === 'function');
const isHostLayer = (value) => hasOperations(value, 'moveTo', 'setFrame');
const isHostDocument = (value) => hasOperations(value, 'allLayers', 'setSelection');

function wrap(object) {
    let ours = known.get(object);
    if (ours === undefined) {
        ours = isHostLayer(object) ? new Layer(maker, object) : new Document(maker, object);
        known.set(object, ours);
    }
    return ours;
}

function wrapAll(objects) {
    const layers = [];
    for (let i = 0; i < objects.length; ++i)
        layers.push(wrap(objects[i]));
    return layers;
}

// For those that look as if a layer could be put into them. The engine is slow with frozen arrays of thousands.
const wrapFrozen = (objects) => Object.freeze(wrapAll(objects));

/** Ours for a layer or document in either form; undefined for anything else. */
function ourObject(value) {
    if (value instanceof Layer || value instanceof Document)
        return value;
    return isHostLayer(value) || isHostDocument(value) ? wrap(value) : undefined;
}

function checkLayer(value, what) {
    const layer = ourObject(value);
    if (!(layer instanceof Layer))
        throw new TypeError(`${what} has to be a layer, but is ${layer ? 'a document' : describe(value)}.`);
    return layer;
}

// Finding -----------------------------------------------------------------------------------------------------------

// The layers in a document or group that a selector or a function means, at most so many. A removed group is in no
// document.
function layersMeant(root, document, selector, most, caller) {
    if (typeof selector === 'function')
        return layersThat(selector, root, most);
    if (typeof selector !== 'string')
        throw new TypeError(`${caller} takes a selector or a function, but was given ${describe(selector)}.`);
    const { id, keys, types, rowsIn } = compileSelector(selector);
    checkTypes(document, types, selector);
    if (id !== undefined && document)
        return layersOfID(root, document, id);
    const table = new LayerTable(host, root.hostObject, document?.hostObject, keys);
    return wrapAll(host.layersAt(rowsIn(table, table.first, most)));
}

// Without a look at all layers.
function layersOfID(root, document, id) {
    const layer = document.layerWithID(id);
    if (layer === null)
        return [];
    let around = layer.group;
    while (root !== document && around !== root && around !== null)
        around = around.group;
    return around === null && root !== document ? [] : [layer];
}

function checkTypes(document, asked, selector) {
    const types = asked.length > 0 ? document?.hostObject.layerTypes?.() : undefined;
    const unknown = types === undefined ? undefined : asked.find((type) => !types.includes(type));
    if (unknown !== undefined) {
        throw new TypeError(`The selector "${shortened(selector, 100)}" asks for the type "${unknown}", which no layer has.`
            + `${suggestion(unknown, types)} There are: ${types.join(', ')}.`);
    }
}

function layersThat(isMeant, root, most) {
    const layers = [];
    for (const layer of root) {
        if (isMeant(layer) && layers.push(layer) >= most)
            break;
    }
    return layers;
}

// Creating ----------------------------------------------------------------------------------------------------------

function createIn(document, group, values) {
    const index = checkIndex(values?.index ?? Infinity);
    const insert = ({ checked, children }, parent, at) => {
        const layer = document.hostObject.insertLayer(checked, parent, at);
        for (const child of children)
            insert(child, layer, checkIndex(Infinity));
        return layer;
    };
    return wrap(insert(checkValues(document, values), group === null ? null : group.hostObject, index));
}

// Documents -----------------------------------------------------------------------------------------------------------

class Document {
    #object;

    constructor(key, object) {
        if (key !== maker)
            throw new TypeError('A script cannot make a document. Ask for one with activeDocument() or documents().');
        this.#object = object;
    }

    /** The application's own object, for operations that this module does not have. */
    get hostObject() { return this.#object; }

    get name() { return this.#object.name(); }
    set name(name) { this.#object.setName(checkText(name, 'The name of a document')); }

    /** The layers at the top level, bottom first. The array is of this moment; the layers are live. */
    get children() { return wrapFrozen(this.#object.layers()); }
    /** All layers, each group before those in it. */
    get layers() { return wrapAll(this.#object.allLayers()); }

    get selection() { return wrapFrozen(this.#object.selection()); }
    set selection(layers) {
        if (!Array.isArray(layers))
            throw new TypeError(`The selection has to be an array of layers, but is ${describe(layers)}.`);
        this.#object.setSelection(layers.map((value) => {
            const layer = checkLayer(value, 'What is selected');
            if (layer.document !== this)
                throw new Error(`${layer} is not in the document "${this.name}", so it cannot be selected there.`);
            return layer.hostObject;
        }));
    }

    layerWithID(id) {
        const object = this.#object.layerWithID(checkText(id, 'The id of a layer'));
        return object ? wrap(object) : null;
    }

    create(values) { return createIn(this, null, values); }

    /** The first layer that a selector or a function means; null when there is none. */
    find(selector) {
        return layersMeant(this, this, selector, 1, 'find()')[0] ?? null;
    }

    findAll(selector) { return layersMeant(this, this, selector, Infinity, 'findAll()'); }

    [Symbol.iterator]() { return this.layers[Symbol.iterator](); }
    get [Symbol.toStringTag]() { return 'Document'; }
    toString() { return `the document "${this.name}"`; }
    toJSON() { return { name: this.name, children: this.children }; }
}

// Layers --------------------------------------------------------------------------------------------------------------

function errorOfRemoved(name) {
    return new Error(`The layer${name} was removed from its document. Ask isRemoved before using a layer that was `
        + 'kept, or look for it again with find().');
}

class Layer {
    #object;
    #frame;
    #style;

    constructor(key, object) {
        if (key !== maker)
            throw new TypeError('A script cannot make a layer with new. Use create() of a document or a group.');
        this.#object = object;
    }

    /** The application's own object, for operations that this module does not have. */
    get hostObject() { return this.#object; }

    get id() { return this.#ask((object) => object.id()); }
    get type() { return this.#ask((object) => object.type()); }
    get name() { return this.#ask((object) => object.name()); }
    set name(name) { this.#attached().setName(checkText(name, 'The name of a layer')); }

    /** x, y, width and height in points. Each can be assigned to; so can the whole, whose missing ones stay. */
    get frame() {
        return this.#frame ??= liveView(() => this.#ask((object) => object.frame()),
            (key, value) => {
                checkFrameValue(key, value);
                this.#attached().setFrame({ [key]: value });
            },
            (key) => { throw new TypeError(`The frame's "${key}" cannot be deleted.`); });
    }
    set frame(frame) { this.#attached().setFrame(checkFrame(frame)); }

    /** Each key can be assigned to and deleted; assigning the whole replaces all of it. */
    get style() {
        return this.#style ??= liveView(() => this.#ask((object) => object.style()),
            (key, value) => {
                const object = this.#attached();
                checkStyleKey(this.document, this.type, key);
                checkStyleValue(key, value);
                object.setStyle({ ...object.style(), [key]: value });
            },
            (key) => {
                const { [key]: gone, ...rest } = this.#attached().style();
                this.#object.setStyle(rest);
            });
    }
    set style(style) { this.#attached().setStyle(checkStyle(this.document, this.type, style)); }

    /** Of a text layer; null for all others. */
    get text() { return this.type === 'text' ? this.#object.text() ?? '' : null; }
    set text(text) { this.#attached().setText(checkContent(this.type, 'text', text)); }

    /** The URL of an image layer's picture; null when it has none, and for all others. */
    get image() { return this.#ask((object) => object.image?.()) ?? null; }
    set image(image) { this.#attached().setImage(checkContent(this.type, 'image', image)); }

    /** Of a group, bottom first; empty for all others. The array is of this moment; the layers are live. */
    get children() { return wrapFrozen(this.#ask((object) => object.layers())); }
    /** The group that it is in; null at the top level, and for a removed layer. */
    get group() {
        const group = this.#ask((object) => object.parent());
        return group ? wrap(group) : null;
    }
    /** The group or document that it is in; null for a removed layer. */
    get parent() { return this.group ?? this.document; }
    get document() {
        const document = this.#ask((object) => object.document());
        return document ? wrap(document) : null;
    }
    get index() { return this.parent?.hostObject.layers().indexOf(this.#object) ?? -1; }
    get isRemoved() {
        try {
            return !this.#object.document();
        } catch {
            return true; // the application has let go of it
        }
    }

    get isSelected() { return this.document?.hostObject.selection().includes(this.#object) ?? false; }
    set isSelected(selected) {
        const object = this.#attached();
        const document = object.document();
        const others = document.selection().filter((other) => other !== object);
        document.setSelection(selected ? [...others, object] : others);
    }

    create(values) {
        this.#attached();
        this.#checkGroup('create() of a layer');
        return createIn(this.document, this, values);
    }

    /** A copy with everything in it, right above this one. */
    duplicate() { return wrap(this.#attached().duplicate()); }

    /** Takes it out of its document, with everything in it. */
    remove() { this.#attached().remove(); }

    /** Moves it into a group or its document, to that index among the layers there; without one to the top. */
    moveTo(parent, index = Infinity) {
        const object = this.#attached();
        const target = ourObject(parent);
        if (target === undefined)
            throw new TypeError(`A layer moves into a group or its document, but was given ${describe(parent)}.`);
        const at = checkIndex(index);
        if (target instanceof Layer)
            target.#attached();
        if (target instanceof Document ? target !== this.document : target.document !== this.document)
            throw new Error(`${this} cannot be moved to another document. Create a layer there instead.`);
        if (target instanceof Document) {
            object.moveTo(null, at);
            return;
        }
        target.#checkGroup('moveTo()');
        for (let outer = target; outer !== null; outer = outer.group) {
            if (outer === this)
                throw new Error(`${this} cannot be moved into itself.`);
        }
        object.moveTo(target.hostObject, at);
    }

    /** The first layer inside that a selector or a function means; null when there is none. */
    find(selector) {
        return layersMeant(this, this.document, selector, 1, 'find()')[0] ?? null;
    }

    findAll(selector) { return layersMeant(this, this.document, selector, Infinity, 'findAll()'); }

    /** All layers inside, each group before those in it. */
    [Symbol.iterator]() {
        return wrapAll(this.#ask((object) => host.layersIn(object)))[Symbol.iterator]();
    }
    get [Symbol.toStringTag]() { return 'Layer'; }
    toString() { return this.isRemoved ? 'a removed layer' : `the ${this.type} layer "${this.name}"`; }

    toJSON() {
        const { id, type, name } = this;
        return {
            id, type, name, frame: { ...this.frame }, style: { ...this.style },
            ...(type === 'text' ? { text: this.text } : {}), ...(type === 'image' ? { image: this.image } : {}),
            ...(type === 'group' ? { children: this.children } : {}),
        };
    }

    // What the application's object answers, also after it was removed, as long as anybody can undo that.
    #ask(question) {
        try {
            return question(this.#object);
        } catch (error) {
            if (this.isRemoved)
                throw errorOfRemoved('');
            throw error;
        }
    }

    // The application's object of a layer that can be changed.
    #attached() {
        if (this.isRemoved) {
            let name = '';
            try {
                name = ` "${this.#object.name()}"`;
            } catch {
                // it has gone with the layer
            }
            throw errorOfRemoved(name);
        }
        return this.#object;
    }

    #checkGroup(caller) {
        if (this.type !== 'group') {
            throw new TypeError(`${caller} needs a group, but ${this} is none. Put the layer into ${this.group
                ? 'the group around it, group' : 'the document, document'}.`);
        }
    }
}

inspectable(Document, ['name', 'children']);
inspectableAs(Layer, (layer, inspect) => inspect(layer.isRemoved ? { isRemoved: true } : layer.toJSON()));

const advice = ' Values of your own are kept with of() of "korvan/settings".';
refuseUnknownNames(Document, 'document', advice);
refuseUnknownNames(Layer, 'layer', advice);

module.exports = {
    ...named({ Document, Layer }),

    /** All open documents. */
    documents: () => wrapFrozen(host.documents()),

    /** The document that the command runs for, or else the one that the user works in; null without any. */
    activeDocument() {
        const object = host.activeDocument();
        return object ? wrap(object) : null;
    },

    /** The layer or document of this module for one of context.document and context.selection. */
    from(value) {
        const ours = ourObject(value);
        if (ours === undefined)
            throw new TypeError(`from() takes a layer or a document of the context, but was given ${describe(value)}.`);
        return ours;
    },
};
