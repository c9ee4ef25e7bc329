const timers = require('timers');
const { Changes } = require('./changes');

// A timer keeps the session running after the handler has returned. Another handler of the same command ("stop") runs in
// the same session and finds it here.
/** @type {number | undefined} */
let timer;

/** @param {Korvan.Context<{ rounds?: number, pause?: number }>} context */
function start(context) {
    let rounds = context.rounds ?? 3;
    const changes = new Changes(context.document);
    changes.on('new', (name) => console.log(`New: ${name}`));
    changes.on('renamed', (before, after) => console.log(`Renamed: ${before} → ${after}`));
    changes.on('gone', (name) => console.log(`Gone: ${name}`));
    console.log(`Watching ${changes.count} layers`);
    timer = timers.setInterval(() => {
        changes.look(context.document);
        rounds -= 1;
        if (rounds === 0)
            stop();
    }, context.pause ?? 100);
}

function stop() {
    timers.clearInterval(timer);
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
