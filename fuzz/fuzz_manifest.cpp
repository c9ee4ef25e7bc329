// Any bytes as a manifest: either an error with a text, or values that can be asked for.

#include "bundles/PluginManifest.h"

#include <QtGlobal>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray text(reinterpret_cast<const char *>(data), qsizetype(size));
    JSONParser parser;
    const auto manifest = parsePluginManifest(text, parser);
    const auto details = parsePluginDetails(text);
    if (!manifest && manifest.error().localizedDescription.isEmpty())
        qFatal("an error without a text");
    if (!manifest && (details.author || details.menu || !details.homepageURL.isEmpty()))
        qFatal("details of a text that is no manifest");
    return 0;
}
