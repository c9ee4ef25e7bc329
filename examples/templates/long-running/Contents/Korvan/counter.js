// A timer keeps the command running after its handler has returned. The handlers "stop" and "Shutdown" run in the same
// session, and find the timer here.
/** @type {number | undefined} */
let timer;

/** @param {Korvan.ApplicationContext<{ rounds?: number, pause?: number }>} context */
function start(context) {
    let rounds = context.rounds ?? 3;
    timer = setInterval(() => {
        console.log(`${rounds} to go`);
        rounds -= 1;
        if (rounds === 0)
            stop();
    }, context.pause ?? 100);
}

function stop() {
    clearInterval(timer);
}

// Called when nothing is left to wait for.
function sayGoodbye() {
    console.log('Done');
}
