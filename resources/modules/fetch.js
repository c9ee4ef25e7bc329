// fetch over the application's own transfers. Bodies are held in memory: texts, bytes and URLSearchParams, no streams.
const named = require('./support/names');
const { Headers, Request, Response, received, takeBody, headersOf, fieldsOfServer } = require('./support/messages');
const { inspectable, inspectableAs } = require('./support/inspectable');
const dataOf = require('./support/data-url');
const service = require('host:fetch');

function failure(url, reason) {
    return new TypeError(`fetch of ${url} has failed: ${reason}`);
}

function responseFrom(answer, request) {
    const isWithoutBody = [204, 205, 304].includes(answer.status) || request.method === 'HEAD';
    const response = new Response(isWithoutBody ? null : answer.body,
        { status: answer.status, statusText: answer.statusText, headers: fieldsOfServer(answer.headers) });
    return received(response, answer.url, answer.url !== request.url.replace(/#.*$/, ''));
}

function answered(request, reason, answer) {
    const isRedirect = reason === null && [301, 302, 303, 307, 308].includes(answer.status);
    if (isRedirect && request.redirect === 'error')
        reason = 'The server redirects to another place, which the option "redirect" forbids.';
    else if (reason === null && !(answer.status >= 200 && answer.status <= 599))
        reason = `The server has answered with the status ${answer.status}, which means nothing.`;
    if (reason !== null)
        throw failure(request.url, reason);
    return responseFrom(answer, request);
}

// Without asking anybody.
function responseOfData(request) {
    const data = dataOf(request.url);
    if (data === undefined)
        throw failure(request.url.slice(0, 100), 'What follows "data:" is wrong.');
    const response = new Response(request.method === 'HEAD' ? null : data.bytes,
        { status: 200, statusText: 'OK', headers: { 'content-type': data.type } });
    return received(response, request.url.replace(/#.*$/s, ''), false);
}

function send(request, resolve, reject) {
    const { signal } = request;
    const number = service.start({
        url: request.url, method: request.method, headers: headersOf(request), redirect: request.redirect,
        body: takeBody(request),
    }, (reason, answer) => {
        signal.removeEventListener('abort', cancel);
        try {
            resolve(answered(request, reason, answer));
        } catch (error) {
            reject(error);
        }
    });
    function cancel() {
        service.cancel(number);
        reject(signal.reason);
    }
    signal.addEventListener('abort', cancel, { once: true });
}

function fetch(input, options) {
    return new Promise((resolve, reject) => {
        const request = new Request(input, options);
        request.signal.throwIfAborted();
        if (request.url.startsWith('data:')) {
            resolve(responseOfData(request));
            return;
        }
        try {
            send(request, resolve, reject);
        } catch (error) {
            reject(failure(request.url, error.message));
        }
    });
}

inspectableAs(Headers, (headers, inspect) => inspect(Object.fromEntries(headers)));
inspectable(Request, ['method', 'url', 'headers', 'redirect', 'bodyUsed']);
inspectable(Response, ['status', 'statusText', 'headers', 'redirected', 'url', 'bodyUsed']);

module.exports = named({ fetch, Headers, Request, Response });
