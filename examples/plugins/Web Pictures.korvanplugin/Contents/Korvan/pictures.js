const querystring = require('querystring');
const { activeDocument } = require('korvan/dom');
const settings = require('korvan/settings');
const ui = require('korvan/ui');
const { Loader } = require('./loader');

function urlFor(layer, server) {
    const { width, height } = layer.frame;
    return `${server}?${querystring.stringify({ width, height, subject: layer.name })}`;
}

async function loadPictures(images, server, progress) {
    const stop = new AbortController();
    progress.onCancel = () => stop.abort();
    let loaded = 0;
    const loader = new Loader();
    loader.on('loaded', (layer, picture) => {
        layer.image = picture;
        progress.value = ++loaded;
    });
    loader.on('failed', (layer, error) => console.warn(`${layer.name}: ${error.message}`));
    await loader.load(new Map(images.map((layer) => [layer, urlFor(layer, server)])), stop.signal);
    return loaded;
}

/**
 * The host may name the server: korvan-plugins run … --context '{"server": "https://example.com/picture.png"}'
 * @param {Korvan.Context<{ server?: string }>} context
 */
async function onRun(context) {
    const server = context.server
        ?? await ui.askText({ title: 'Which server has pictures?', value: settings.get('server', 'https://') });
    if (server === null)
        return 0;
    settings.set('server', server);
    const images = activeDocument().findAll('image');
    return ui.withProgress({ title: 'Loading pictures', total: images.length },
        (progress) => loadPictures(images, server, progress));
}
