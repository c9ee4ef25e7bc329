const { Buffer } = require('buffer');
const EventEmitter = require('events');
const path = require('path');
const timers = require('timers');

const ATTEMPTS = 3;
const PAUSE = 200; // milliseconds

// Loads pictures one after another. Emits "loaded" with the key of each and its picture, or "failed" with the key and an
// error.
class Loader extends EventEmitter {
    // `urls` is a map; the signal ends it early.
    async load(urls, signal) {
        for (const [key, url] of urls) {
            if (signal.aborted)
                return;
            try {
                this.emit('loaded', key, await pictureOf(await patientFetch(url, signal)));
            } catch (error) {
                this.emit('failed', key, error);
            }
        }
    }
}

// A server that is busy may not be so for long.
async function patientFetch(url, signal) {
    for (let attempt = 1; ; ++attempt) {
        const response = await fetch(url, { signal });
        if (response.ok)
            return response;
        if (response.status < 500 || attempt === ATTEMPTS)
            throw new Error(`The server has answered ${response.status}.`);
        await timers.promises.setTimeout(PAUSE * attempt);
    }
}

// The picture in the text of a URL, so that the document has it without the network.
async function pictureOf(response) {
    const extension = path.extname(new URL(response.url).pathname).slice(1) || 'png';
    const type = response.headers.get('content-type') ?? `image/${extension}`;
    return `data:${type};base64,${Buffer.from(await response.bytes()).toString('base64')}`;
}

module.exports = { Loader };
