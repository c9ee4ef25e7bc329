// Every layer with its depth in the tree, each group before what it holds.
function collect(layers, depth, found) {
    for (const layer of layers) {
        found.push({ layer, depth });
        collect(layer.layers(), depth + 1, found);
    }
    return found;
}

exports.layersWithDepth = (document) => collect(document.layers(), 0, []);
