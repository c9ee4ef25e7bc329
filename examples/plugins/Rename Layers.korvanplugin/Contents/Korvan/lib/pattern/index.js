// The values that a pattern's letters stand for.
const letters = {
    n: (layer, number) => String(number).padStart(2, '0'),
    t: (layer) => layer.type(),
    w: (layer) => Math.round(layer.frame().width),
    h: (layer) => Math.round(layer.frame().height),
    c: (layer) => layer.name(),
};

exports.expand = function expand(pattern, layer, number) {
    return pattern.replace(/%([a-z])/g, (text, letter) => {
        const value = letters[letter];
        return value === undefined ? text : value(layer, number);
    });
};
