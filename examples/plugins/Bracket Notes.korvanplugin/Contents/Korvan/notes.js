function onRun(context) {
    var layers = context.selection;
    for (var i = 0; i < layers.length; i++) {
        var frame = [layers[i] frame];
        [context.document addLayer:{
            name: "Note on " + [layers[i] name],
            type: "text",
            text: [[layers[i] name] toUpperCase],
            frame: {x: frame.x, y: frame.y + frame.height + 4, width: frame.width, height: 20}
        }];
    }
    print("Notes: " + layers.length);
    return layers.length;
}
