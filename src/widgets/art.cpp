#include "widgets/art.h"

#include "widgets/gif/gif_reader.h"
#include "widgets/gif_canvas.h"

namespace quillet {

PicturePtr PictureFromGif(const std::vector<std::uint8_t>& bytes) {
  if (bytes.empty()) return nullptr;
  GifReader reader;
  if (reader.LoadAllFrames(bytes) < 1) return nullptr;
  return std::make_shared<const Picture>(FramePicture(reader.Animation(), 1));
}

PicturePtr LoadGifPicture(ResourceService& resources, std::string_view type, std::string_view name) {
  const auto bytes = resources.Resource(type, name);
  return bytes ? PictureFromGif(*bytes) : nullptr;
}

}  // namespace quillet
