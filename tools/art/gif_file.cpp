#include "gif_file.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <map>
#include <stdexcept>

#include "widgets/gif/gif_encoder.h"
#include "widgets/gif/gif_reader.h"
#include "widgets/gif_canvas.h"

namespace quillet::art {
namespace {

constexpr std::size_t kColours = 255;
constexpr std::uint8_t kSeeThrough = 255;
constexpr std::uint32_t kKeyColour = 0xC000C0;  // as 0xRRGGBB
constexpr double kWeight[3] = {2.0, 4.0, 3.0};  // the eye is most sensitive to green
constexpr int kRounds = 8;

struct Entry {
  std::uint32_t rgb = 0;
  std::size_t count = 0;
};

struct Mean {
  double c[3] = {0, 0, 0};
};

double Channel(std::uint32_t rgb, int c) { return static_cast<double>((rgb >> (16 - 8 * c)) & 0xFF); }

double Distance(std::uint32_t rgb, const Mean& m) {
  double d = 0;
  for (int c = 0; c < 3; ++c) d += kWeight[c] * (Channel(rgb, c) - m.c[c]) * (Channel(rgb, c) - m.c[c]);
  return d;
}

Mean MeanOf(const std::vector<Entry>& entries) {
  Mean m;
  double total = 0;
  for (const Entry& e : entries) {
    for (int c = 0; c < 3; ++c) m.c[c] += Channel(e.rgb, c) * static_cast<double>(e.count);
    total += static_cast<double>(e.count);
  }
  for (double& v : m.c) v = total > 0 ? v / total : 0;
  return m;
}

double ErrorOf(const std::vector<Entry>& entries) {
  const Mean m = MeanOf(entries);
  double error = 0;
  for (const Entry& e : entries) error += Distance(e.rgb, m) * static_cast<double>(e.count);
  return error;
}

std::uint32_t Round(const Mean& m) {
  std::uint32_t rgb = 0;
  for (int c = 0; c < 3; ++c)
    rgb |= static_cast<std::uint32_t>(std::lround(std::clamp(m.c[c], 0.0, 255.0))) << (16 - 8 * c);
  return rgb;
}

// Splits the box at the count-weighted median of its widest channel.
std::pair<std::vector<Entry>, std::vector<Entry>> Split(std::vector<Entry> box) {
  const Mean m = MeanOf(box);
  int widest = 0;
  double best = -1;
  for (int c = 0; c < 3; ++c) {
    double spread = 0;
    for (const Entry& e : box) spread += (Channel(e.rgb, c) - m.c[c]) * (Channel(e.rgb, c) - m.c[c]) * static_cast<double>(e.count);
    if (spread * kWeight[c] > best) best = spread * kWeight[c], widest = c;
  }
  std::sort(box.begin(), box.end(), [widest](const Entry& a, const Entry& b) {
    const double ca = Channel(a.rgb, widest), cb = Channel(b.rgb, widest);
    return ca != cb ? ca < cb : a.rgb < b.rgb;
  });
  std::size_t total = 0, half = 0, cut = 1;
  for (const Entry& e : box) total += e.count;
  for (std::size_t i = 0; i + 1 < box.size(); ++i) {
    half += box[i].count;
    cut = i + 1;
    if (half * 2 >= total) break;
  }
  return {std::vector<Entry>(box.begin(), box.begin() + static_cast<std::ptrdiff_t>(cut)),
          std::vector<Entry>(box.begin() + static_cast<std::ptrdiff_t>(cut), box.end())};
}

std::size_t Nearest(std::uint32_t rgb, const std::vector<Mean>& palette) {
  std::size_t best = 0;
  double best_distance = Distance(rgb, palette[0]);
  for (std::size_t i = 1; i < palette.size(); ++i) {
    const double d = Distance(rgb, palette[i]);
    if (d < best_distance) best_distance = d, best = i;
  }
  return best;
}

std::vector<std::uint32_t> ChoosePalette(const std::vector<Entry>& colours) {
  if (colours.size() <= kColours) {
    std::vector<std::uint32_t> exact;
    for (const Entry& e : colours) exact.push_back(e.rgb);
    return exact;
  }
  std::vector<std::vector<Entry>> boxes{colours};
  std::vector<double> errors{ErrorOf(colours)};
  while (boxes.size() < kColours) {
    std::size_t worst = 0;
    for (std::size_t i = 1; i < boxes.size(); ++i)
      if (errors[i] > errors[worst]) worst = i;
    if (boxes[worst].size() < 2) break;
    auto [low, high] = Split(std::move(boxes[worst]));
    errors[worst] = ErrorOf(low);
    boxes[worst] = std::move(low);
    errors.push_back(ErrorOf(high));
    boxes.push_back(std::move(high));
  }
  std::vector<Mean> palette;
  for (const auto& box : boxes) palette.push_back(MeanOf(box));
  // A few rounds of k-means settle the means on what the boxes cut apart.
  for (int round = 0; round < kRounds; ++round) {
    std::vector<std::vector<Entry>> members(palette.size());
    for (const Entry& e : colours) members[Nearest(e.rgb, palette)].push_back(e);
    for (std::size_t i = 0; i < palette.size(); ++i)
      if (!members[i].empty()) palette[i] = MeanOf(members[i]);
  }
  std::vector<std::uint32_t> rounded;
  for (const Mean& m : palette) rounded.push_back(Round(m));
  return rounded;
}

}  // namespace

std::vector<std::uint8_t> EncodeGif(const Picture& picture) {
  std::map<std::uint32_t, std::size_t> histogram;
  bool see_through = false;
  for (std::uint32_t p : picture.pixels) {
    const std::uint32_t a = p >> 24;
    if (a != 0 && a != 255) throw std::runtime_error("soft alpha cannot go into a GIF");
    if (a == 0) see_through = true;
    else ++histogram[p & 0xFFFFFF];
  }
  std::vector<Entry> colours;
  for (const auto& [rgb, count] : histogram) colours.push_back({rgb, count});
  std::vector<std::uint32_t> palette = ChoosePalette(colours);
  for (std::uint32_t& rgb : palette)
    if (rgb == kKeyColour) rgb ^= 1;  // one step of blue off the key: not see-through on the bar
  if (palette.empty()) palette.push_back(0);
  std::vector<Mean> means;
  for (std::uint32_t rgb : palette) means.push_back({{Channel(rgb, 0), Channel(rgb, 1), Channel(rgb, 2)}});

  GifAnimation gif;
  ColorTable table;
  for (std::size_t i = 0; i < palette.size(); ++i) table.Colors[i] = palette[i];
  table.Count = 256;
  gif.ColorTables.push_back(table);
  FrameRecord frame;
  frame.Width = picture.width;
  frame.Height = picture.height;
  frame.TransparentIndex = kSeeThrough;
  frame.TransparentFlag = see_through ? 1 : 0;
  gif.Frames.push_back(frame);
  gif.Strip.Width = picture.width;
  gif.Strip.Height = picture.height;
  gif.Strip.Stride = (picture.width + 3) / 4 * 4;
  gif.Strip.Bits.assign(static_cast<std::size_t>(gif.Strip.Stride) * static_cast<std::size_t>(picture.height), 0);
  std::map<std::uint32_t, std::uint8_t> index_of;
  for (const Entry& e : colours) index_of[e.rgb] = static_cast<std::uint8_t>(Nearest(e.rgb, means));
  Picture expected = picture;
  for (int y = 0; y < picture.height; ++y)
    for (int x = 0; x < picture.width; ++x) {
      const std::size_t at = static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width) +
                             static_cast<std::size_t>(x);
      const std::uint32_t p = picture.pixels[at];
      const std::uint8_t index = (p >> 24) == 0 ? kSeeThrough : index_of[p & 0xFFFFFF];
      gif.Strip.Row(y)[x] = index;
      expected.pixels[at] = index == kSeeThrough ? 0 : 0xFF000000u | palette[index];
    }
  std::vector<std::uint8_t> bytes = FrameToPicture(gif, 1);
  if (DecodeGif(bytes).pixels != expected.pixels) throw std::runtime_error("the GIF does not read back");
  return bytes;
}

Picture DecodeGif(const std::vector<std::uint8_t>& bytes) {
  GifReader reader;
  if (reader.LoadAllFrames(bytes) < 1) return {};
  return FramePicture(reader.Animation(), 1);
}

void WriteFile(const std::string& path, const std::vector<std::uint8_t>& bytes) {
  std::ofstream out(path, std::ios::binary);
  out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  if (!out) throw std::runtime_error("cannot write " + path);
}

}  // namespace quillet::art
