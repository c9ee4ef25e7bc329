const EventEmitter = require('events');

// Emits "new", "renamed" and "gone" for the layers that differ from those of the time before.
class Changes extends EventEmitter {
    #known;

    constructor(document) {
        super();
        this.#known = namesIn(document);
    }

    get count() { return this.#known.size; }

    look(document) {
        const current = namesIn(document);
        for (const [id, name] of current) {
            if (!this.#known.has(id))
                this.emit('new', name);
            else if (this.#known.get(id) !== name)
                this.emit('renamed', this.#known.get(id), name);
        }
        for (const [id, name] of this.#known) {
            if (!current.has(id))
                this.emit('gone', name);
        }
        this.#known = current;
    }
}

function namesIn(document) {
    return new Map(document.allLayers().map((layer) => [layer.id(), layer.name()]));
}

module.exports = { Changes };
