const names = ['Ada', 'Alan', 'Grace', 'Katherine', 'Linus', 'Margaret'];

/**
 * For hosts that ask plug-ins for data.
 * @param {{ seed?: number }} context
 */
function supplyText(context) {
    return names[(context.seed ?? 0) % names.length];
}

/**
 * For the menu: names into the selected text layers, or into all of them.
 * @param {Korvan.Context} context
 */
function fillTexts(context) {
    if (!context.document) {
        console.log('There is no document.');
        return 0;
    }
    const chosen = context.selection.length > 0 ? context.selection : context.document.allLayers();
    const texts = chosen.filter((layer) => layer.type() === 'text');
    texts.forEach((layer, index) => layer.setText(supplyText({ seed: index })));
    console.log(`${texts.length} texts filled`);
    return texts.length;
}
