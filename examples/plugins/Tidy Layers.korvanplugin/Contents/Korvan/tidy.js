// Works on the selected layers, or on all of the document's when none is selected.

/** @param {Korvan.Context} context */
function chosenLayers(context) {
    return context.selection.length > 0 ? context.selection : context.document.allLayers();
}

/** @param {Korvan.Context} context */
function roundFrames(context) {
    let changed = 0;
    for (const layer of chosenLayers(context)) {
        const before = layer.frame();
        const after = Object.fromEntries(Object.entries(before).map(([key, value]) => [key, Math.round(value)]));
        if (JSON.stringify(before) !== JSON.stringify(after)) {
            layer.setFrame(after);
            changed += 1;
        }
    }
    console.log('%d layers put on whole points', changed);
    return changed;
}

/**
 * @param {Korvan.Context} context
 * @param {(a: Korvan.Layer, b: Korvan.Layer) => number} compare
 */
function sort(context, compare) {
    const layers = context.document.layers();
    const sorted = [...layers].sort(compare);
    sorted.forEach((layer, index) => layer.moveToIndex(index));
    console.log('Sorted:', sorted.map((layer) => layer.name()).join(', '));
    return sorted.length;
}

/** @param {Korvan.Context} context */
function sortByName(context) {
    return sort(context, (a, b) => a.name().localeCompare(b.name()));
}

/** @param {Korvan.Context} context */
function sortBySize(context) {
    /** @param {Korvan.Layer} layer */
    const area = (layer) => layer.frame().width * layer.frame().height;
    return sort(context, (a, b) => area(b) - area(a));
}
