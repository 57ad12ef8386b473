/// @file
/// A directory of pictures, one for each scene, and a page that shows them.
#pragma once

#include <string>
#include <vector>

#include "host/scene/scene.h"

namespace host {

/// What the page shows of a scene.
struct GalleryPicture {
    /// The scene's name, which its picture has too.
    std::string name;
    std::string title;
    /// What the page groups by.
    std::string kind;
    std::string licence;
    std::vector<std::string> calls;
    std::string sceneText;
    std::string svg;
};

/// Draws a scene. Throws `SceneError`.
GalleryPicture makePicture(const std::string& name, std::string sceneText,
                           const Warning& warning = {});

/// The page: complete HTML that refers to the pictures by `name.svg`, and `name.png` on request.
std::string galleryPage(const std::vector<GalleryPicture>& pictures, bool withPng);

} // namespace host
