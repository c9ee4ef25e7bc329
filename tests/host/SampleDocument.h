#pragma once

#include <QByteArray>

/// A document with three layers: "box" (0, 0, 100, 100), "disc" (200, 0, 100, 100), and a group "both" of "left" (0,
/// 200, 50, 50) and "right" (100, 200, 50, 50).
inline const QByteArray sampleDocument = R"({
    "name": "Sample",
    "layers": [
        {"id": "box", "name": "Box", "type": "rectangle", "frame": {"x": 0, "y": 0, "width": 100, "height": 100}},
        {"id": "disc", "name": "Disc", "type": "oval", "frame": {"x": 200, "y": 0, "width": 100, "height": 100}},
        {"id": "both", "name": "Both", "type": "group", "frame": {"x": 0, "y": 200, "width": 150, "height": 50},
         "layers": [
            {"id": "left", "name": "Left", "type": "rectangle",
             "frame": {"x": 0, "y": 200, "width": 50, "height": 50}},
            {"id": "right", "name": "Right", "type": "rectangle",
             "frame": {"x": 100, "y": 200, "width": 50, "height": 50}}]}]
})";
