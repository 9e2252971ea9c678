#pragma once
// A picture as the host hands it over: premultiplied-free ARGB32 pixels.
// Kept free of any toolkit type so that hosts need no widget library to fill it.

#include <cstdint>
#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace fw {

class Picture {
public:
    Picture(int width, int height, std::vector<std::uint32_t> argb)
        : m_width(width), m_height(height), m_argb(std::move(argb))
    {
    }
    int Width() const { return m_width; }
    int Height() const { return m_height; }
    /// Row-major, Width() * Height() pixels of 0xAARRGGBB.
    const std::vector<std::uint32_t>& Pixels() const { return m_argb; }
    bool IsNull() const { return m_width <= 0 || m_height <= 0; }

private:
    int m_width;
    int m_height;
    std::vector<std::uint32_t> m_argb;
};

using PicturePtr = std::shared_ptr<const Picture>;

/// A variant that holds nothing, a picture or a text (an icon path).
using PictureOrText = std::variant<std::monostate, PicturePtr, std::string>;

inline bool IsEmpty(const PictureOrText& v) { return std::holds_alternative<std::monostate>(v); }

} // namespace fw
