/**
 * Every layer with its depth in the tree, each group before what it holds.
 * @param {Korvan.Layer[]} layers
 * @param {number} depth
 * @param {{ layer: Korvan.Layer, depth: number }[]} found
 */
function collect(layers, depth, found) {
    for (const layer of layers) {
        found.push({ layer, depth });
        collect(layer.layers(), depth + 1, found);
    }
    return found;
}

/** @param {Korvan.Document} document */
exports.layersWithDepth = (document) => collect(document.layers(), 0, []);
