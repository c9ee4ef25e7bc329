#pragma once

#include "CommandLineFixture.h"

#include <QJsonArray>

/// A plug-in with tests.
class PluginTestsFixture : protected CommandLineFixture
{
protected:
    void makePlugin()
    {
        makeFolder();
        plugin(QStringLiteral("Words"), manifest, script);
    }

    QString bundle() const { return m_folder->filePath(QStringLiteral("plugins/Words.korvanplugin")); }
    void testFile(const QString &name, const QByteArray &content) const
    {
        writeFile(bundle() + QStringLiteral("/tests/") + name, content);
    }
    Finished test(const QStringList &more = {}) const
    {
        return run(QStringList{QStringLiteral("test"), bundle(), QStringLiteral("--json")} + more);
    }
    static QJsonObject result(const Finished &finished, int index = 0)
    {
        return finished.json()[QStringLiteral("tests")].toArray().at(index).toObject();
    }
    /// "title status" of each.
    static QStringList statuses(const Finished &finished)
    {
        QStringList lines;
        const auto tests = finished.json()[QStringLiteral("tests")].toArray();
        for (const auto &test : tests) {
            const auto values = test.toObject();
            lines.append(
                values[QStringLiteral("title")].toString() + u' ' + values[QStringLiteral("status")].toString());
        }
        return lines;
    }

    // The plug-in

    inline static const QByteArray manifest =
        R"({"name": "Words", "identifier": "com.example.words", "version": "1.0", "suppliesData": true, "commands": [
    {"identifier": "throw", "name": "Throw", "script": "script.js", "handler": "onThrow"},
    {"identifier": "late", "name": "Late", "script": "script.js", "handler": "onLate"},
    {"identifier": "loop", "name": "Loop", "script": "script.js", "handler": "onLoop"},
    {"identifier": "ask", "name": "Ask", "script": "script.js", "handler": "onAsk"},
    {"identifier": "fetch", "name": "Fetch", "script": "script.js", "handler": "onFetch"},
    {"identifier": "pause", "name": "Pause", "script": "script.js", "handler": "onPause"},
    {"identifier": "data", "name": "Data", "script": "script.js",
        "handlers": {"run": "onExport", "actions": {"Startup": "onStartup"}}},
    {"identifier": "undefined", "name": "Undefined", "script": "script.js", "handler": "onNothing"},
    {"identifier": "tick", "name": "Tick", "script": "script.js", "handler": "onTick"},
    {"identifier": "remember", "name": "Remember", "script": "script.js", "handler": "onRemember"},
    {"identifier": "add", "name": "Add", "script": "script.js", "handlers": {"run": "onAdd", "other": "onOther"}}]})";

    inline static const QByteArray script = R"(
function onThrow() { console.log('before'); null.x; }
function onLate() { setTimeout(() => { undefined.y; }, 1000); }
function onLoop() { for (;;); }
async function onAsk() {
    const ui = require('korvan/ui');
    const name = await ui.askText('Name');
    const button = await ui.alert({ title: 'Sure?', buttons: ['Yes', 'No'] });
    return [name, button, await ui.askNumber({ title: 'Count', minimum: 1 })];
}
async function onFetch() {
    const response = await fetch('https://api.example.com/words');
    return (await response.json()).words;
}
async function onPause() {
    await require('korvan/ui').withProgress('Pause', (progress) => progress.pause());
    await new Promise((resolve) => setTimeout(resolve, 10));
}
async function onStartup() {
    await null;
    const { register } = require('korvan/data-supplier');
    register({ name: 'Cities', kind: 'text', supply: ({ layers }) => layers.map((layer) => 'near ' + layer.name) });
    register({ name: 'Broken', kind: 'text', supply: () => 5 });
}
async function onExport() {
    const ui = require('korvan/ui');
    return ui.withProgress('Export', async (progress) => {
        while (!progress.isCancelled)
            await new Promise((resolve) => setTimeout(resolve, 10));
        return 'cancelled';
    });
}
function onTick() { setInterval(() => console.log('tick'), 60000); }
function onRemember() {
    const settings = require('korvan/settings');
    settings.set('count', settings.get('count', 0) + 1);
    return settings.get('count');
}
function onAdd(context) {
    require('korvan/dom').activeDocument().create({ type: 'text', name: context.title ?? 'Word' });
    console.log('added');
    return { name: context.document.name() };
}
function onOther() { return 'other'; }
)";

    /// What the tests use of the module.
    inline static const QByteArray head = "const { runCommand, supplyData, clock, user, network, log, clearLog, "
                                          "openDocument, snapshot, undo, redo, undoText } "
                                          "= require('korvan/testing'); ";
};
