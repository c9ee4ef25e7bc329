// What the scripts of plug-ins find, for editors and compilers. Write, above a handler,
//
//     /** @param {Korvan.Context} context */
//     function onRun(context) {
//
// and an editor completes what is in it.

/// <reference path="korvan.d.ts" />
/// <reference path="host.d.ts" />
/// <reference path="globals.d.ts" />
/// <reference path="web.d.ts" />
/// <reference path="modules/korvan.d.ts" />
/// <reference path="modules/korvan-async.d.ts" />
/// <reference path="modules/korvan-data-supplier.d.ts" />
/// <reference path="modules/korvan-dom.d.ts" />
/// <reference path="modules/korvan-settings.d.ts" />
/// <reference path="modules/korvan-ui.d.ts" />
/// <reference path="modules/buffer.d.ts" />
/// <reference path="modules/console.d.ts" />
/// <reference path="modules/events.d.ts" />
/// <reference path="modules/node.d.ts" />
/// <reference path="modules/os.d.ts" />
/// <reference path="modules/path.d.ts" />
/// <reference path="modules/process.d.ts" />
/// <reference path="modules/querystring.d.ts" />
/// <reference path="modules/stream.d.ts" />
/// <reference path="modules/string_decoder.d.ts" />
/// <reference path="modules/timers.d.ts" />
/// <reference path="modules/util.d.ts" />
