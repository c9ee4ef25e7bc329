const words = require('./words.json');

/**
 * The same seed gives the same words, so that a design does not change with every run.
 * @param {number} seed
 */
function* wordsFrom(seed) {
    for (let state = seed; ; state = (state * 1103515245 + 12345) % 2147483648)
        yield words[(state >>> 16) % words.length];
}

/**
 * @param {number} seed
 * @param {number} length
 */
function sentence(seed, length) {
    const source = wordsFrom(seed);
    const chosen = Array.from({ length }, () => source.next().value);
    return chosen[0][0].toUpperCase() + chosen.join(' ').slice(1) + '.';
}

/** @param {Korvan.Context} context */
function fillTexts(context) {
    const chosen = context.selection.length > 0 ? context.selection : context.document.allLayers();
    const texts = chosen.filter((layer) => layer.type() === 'text');
    texts.forEach((layer, index) => {
        const { width, height } = layer.frame();
        layer.setText(sentence(index + 1, Math.max(3, Math.round((width * height) / 1500))));
        console.log(`${layer.name()}: ${layer.text()}`);
    });
    return texts.length;
}

/**
 * For hosts that ask plug-ins for data.
 * @param {Korvan.ApplicationContext<{ seed?: number, words?: number }>} context
 */
function supplyText(context) {
    return sentence(context.seed ?? 1, context.words ?? 8);
}
