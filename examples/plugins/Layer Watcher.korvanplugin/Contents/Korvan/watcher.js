// A timer keeps the session running after the handler has returned. Another handler of the same command ("stop") runs in
// the same session and finds it here.
/** @type {number | undefined} */
let timer;
/** @type {Map<string, string>} */
let known = new Map();

/** @param {Korvan.Document} document */
function names(document) {
    return new Map(document.allLayers().map((layer) => [layer.id(), layer.name()]));
}

/** @param {Map<string, string>} current */
function compare(current) {
    for (const [id, name] of current) {
        if (!known.has(id))
            console.log(`New: ${name}`);
        else if (known.get(id) !== name)
            console.log(`Renamed: ${known.get(id)} → ${name}`);
    }
    for (const [id, name] of known) {
        if (!current.has(id))
            console.log(`Gone: ${name}`);
    }
    known = current;
}

/** @param {Korvan.Context<{ rounds?: number, pause?: number }>} context */
function start(context) {
    let rounds = context.rounds ?? 3;
    known = names(context.document);
    console.log(`Watching ${known.size} layers`);
    timer = setInterval(() => {
        compare(names(context.document));
        rounds -= 1;
        if (rounds === 0)
            stop();
    }, context.pause ?? 100);
}

function stop() {
    clearInterval(timer);
    console.log('Watching no more');
}

/** @param {Korvan.Context} context */
function selectionChanged(context) {
    console.log(`Selected: ${context.selection.map((layer) => layer.name()).join(', ')}`);
}

/** @param {Korvan.ApplicationContext} context */
function greet(context) {
    console.log(`${context.plugin.name()} ${context.plugin.version()} is ready`);
}
