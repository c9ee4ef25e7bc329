function divide(context) {
    return widthOf(context.document.layerWithID('no such layer'));
}

function widthOf(layer) {
    return layer.frame().width;
}

function late() {
    setTimeout(() => {
        throw new Error('Too late to be caught');
    }, 10);
}

async function promised() {
    await null;
    throw new TypeError('A promise that is not kept');
}

function needy() {
    return require('./not-here');
}

function forEver() {
    for (;;) { }
}
