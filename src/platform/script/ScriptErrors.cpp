#include "platform/script/ScriptErrors.h"

#include <algorithm>

namespace {

JSObjectRef objectOf(JSValueRef value)
{
    return const_cast<JSObjectRef>(value);
}

QString textProperty(ScriptContext &context, JSObjectRef object, const char *name)
{
    const auto value = context.property(object, name, nullptr);
    return value && JSValueIsString(context.ref(), value) ? context.textOf(value) : QString();
}

int numberProperty(ScriptContext &context, JSObjectRef object, const char *name)
{
    const auto value = context.property(object, name, nullptr);
    if (!value || !JSValueIsNumber(context.ref(), value))
        return 0;
    const double number = JSValueToNumber(context.ref(), value, nullptr);
    return number >= 1 && number <= 1e9 ? int(number) : 0;
}

bool isError(ScriptContext &context, JSValueRef value)
{
    return JSValueIsObject(context.ref(), value)
        && (!textProperty(context, objectOf(value), "stack").isNull()
            || !textProperty(context, objectOf(value), "sourceURL").isNull());
}

ScriptException withoutStack(
    ScriptContext &context, const ScriptLocations &locations, JSObjectRef error, const QString &message)
{
    const auto place = locations.frame({}, textProperty(context, error, "sourceURL"),
        numberProperty(context, error, "line"), numberProperty(context, error, "column"));
    return ScriptException(message, place.file, place.line, place.column, {});
}

} // namespace

ScriptException readScriptException(ScriptContext &context, ScriptConverter &converter,
    const ScriptLocations &locations, JSValueRef thrown, const QString &sourceURL)
{
    if (!isError(context, thrown))
        return ScriptException(converter.description(thrown), locations.fileName(sourceURL), 0, 0, {});

    auto *const error = objectOf(thrown);
    auto message = context.textOf(error);
    if (message.isNull())
        message = QStringLiteral("Error"); // its own toString() raises one more
    const auto frames = locations.frames(textProperty(context, error, "stack"));
    if (frames.isEmpty())
        return withoutStack(context, locations, error, message);
    const auto &innermost = frames.first();
    return ScriptException(message, innermost.file, innermost.line, innermost.column, ScriptLocations::text(frames));
}

namespace {

struct LineRange
{
    qsizetype start;
    qsizetype end;
};

LineRange lineRange(const QString &source, int line)
{
    qsizetype start = 0;
    for (int i = 1; i < line; ++i) {
        const auto next = source.indexOf(u'\n', start);
        if (next < 0)
            return {source.size(), source.size()};
        start = next + 1;
    }
    const auto end = source.indexOf(u'\n', start);
    return {start, end < 0 ? source.size() : end};
}

/// What the author has written ends there; blanks and empty lines at its end do not count.
qsizetype authorsEnd(const QString &source, qsizetype trailing)
{
    auto end = std::max<qsizetype>(source.size() - trailing, 0);
    while (end > 0 && source.at(end - 1).isSpace())
        --end;
    return end;
}

int lineOf(const QString &source, qsizetype offset)
{
    return int(QStringView(source).left(offset).count(u'\n')) + 1;
}

/// How far back from `end` the text is what the message quotes.
qsizetype quotedLength(const QString &source, qsizetype start, qsizetype end, const QString &message)
{
    constexpr qsizetype longestQuote = 200;
    for (auto length = std::min(end - start, longestQuote); length > 1; --length) {
        if (message.contains(QStringView(source).mid(end - length, length)))
            return length;
    }
    return 1;
}

} // namespace

void addColumnToSyntaxError(
    ScriptContext &context, const QString &source, const ScriptString &sourceURL, JSValueRef error, qsizetype trailing)
{
    auto *const object = objectOf(error);
    int line = numberProperty(context, object, "line");
    if (line == 0)
        return;
    const auto message = context.textOf(error);
    const auto isSameError = [&](qsizetype length) {
        JSValueRef other = nullptr;
        const bool isScript = context.checkSyntax(ScriptString(QStringView(source).left(length)), sourceURL, &other);
        return !isScript && other && context.textOf(other) == message
            && numberProperty(context, objectOf(other), "line") == line;
    };

    auto [start, end] = lineRange(source, line);
    auto low = start;
    auto high = end;
    if (message.contains(u"end of script") || isSameError(start) || !isSameError(end))
        low = high = end; // the error is that the text ends
    while (low < high) {
        const auto middle = low + (high - low) / 2;
        if (isSameError(middle))
            high = middle;
        else
            low = middle + 1;
    }
    auto quoted = quotedLength(source, start, high, message);
    if (high > source.size() - trailing) { // the author has never seen what is there
        high = authorsEnd(source, trailing);
        line = lineOf(source, high);
        start = lineRange(source, line).start;
        quoted = 1;
        context.setProperty(object, "line", JSValueMakeNumber(context.ref(), line));
    }
    const auto column = high > start ? high - start - quoted + 1 : 1;
    context.setProperty(object, "column", JSValueMakeNumber(context.ref(), double(column)));
    // The stack only holds who asked for the text.
    const auto place =
        u'@' + textProperty(context, object, "sourceURL") + QStringLiteral(":%1:%2\n").arg(line).arg(column);
    const ScriptString stack(QStringView(place + textProperty(context, object, "stack")));
    context.setProperty(object, "stack", JSValueMakeString(context.ref(), stack.get()));
}
