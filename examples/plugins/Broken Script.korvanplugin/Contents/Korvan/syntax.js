function onRun(context) {
    const layers = context.document.layers(;
    return layers.length;
}
