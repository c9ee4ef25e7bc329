/**
 * Called when the user chooses the command. The context holds the document, the selection, and the command itself.
 * @param {Korvan.Context} context
 */
function onRun(context) {
    if (!context.document) {
        console.log('There is no document.');
        return 0;
    }
    const count = context.document.allLayers().length;
    console.log(`${count} layers`);
    return count;
}
