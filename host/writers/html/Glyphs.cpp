#include "writers/html/Glyphs.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>

#include "report/Clean.h"

namespace html {

namespace {

constexpr std::array kGlyphs{
    Glyph{0x23E4, "straightness", 1.6, "M0-50H160"},
    Glyph{0x23E5, "flatness", 1.75, "M0 0H120L175-100H55z"},
    Glyph{0x25CB, "circularity", 1.2, "M5-50a55 55 0 1 0 110 0a55 55 0 1 0-110 0"},
    Glyph{0x232D, "cylindricity", 1.7,
          "M45-50a40 40 0 1 0 80 0a40 40 0 1 0-80 0M0 10L70-110M100 10L170-110"},
    Glyph{0x2312, "line profile", 1.5, "M0-10a75 75 0 0 1 150 0"},
    Glyph{0x2313, "surface profile", 1.5, "M0-10a75 75 0 0 1 150 0z"},
    Glyph{0x2220, "angularity", 1.4, "M140 0H0L130-90"},
    Glyph{0x27C2, "perpendicularity", 1.4, "M0 0H140M70 0V-110"},
    Glyph{0x22A5, "perpendicular", 1.4, "M0 0H140M70 0V-110"},
    Glyph{0x2225, "parallelism", 1.2, "M0 5L60-105M55 5L115-105"},
    Glyph{0x2316, "position", 1.4, "M28-50a42 42 0 1 0 84 0a42 42 0 1 0-84 0M0-50H140M70 20V-120"},
    Glyph{0x25CE, "concentricity", 1.3,
          "M3-50a62 62 0 1 0 124 0a62 62 0 1 0-124 0M31-50a34 34 0 1 0 68 0a34 34 0 1 0-68 0"},
    Glyph{0x232F, "symmetry", 1.5, "M30-90H120M0-50H150M30-10H120"},
    Glyph{0x2197, "circular runout", 0.95, "M0 0L75-95M85-108L46-82 72-60z", true},
    Glyph{0x2330, "total runout", 1.65,
          "M0 0L75-95M85-108L46-82 72-60zM70 0L145-95M155-108L116-82 142-60zM0 0H70", true},
    Glyph{0x2300, "diameter", 1, "M8-50a42 42 0 1 0 84 0a42 42 0 1 0-84 0M8 15L92-115"},
    Glyph{0x25A1, "square", 1, "M0 0H95V-95H0z"},
    Glyph{0x2334, "counterbore", 1.6, "M0-90V-10H150V-90"},
    Glyph{0x2335, "countersink", 1.6, "M0-90L75-10 150-90"},
    Glyph{0x21A7, "depth", 1.2, "M0-100H110M55-100V-40M55 0L75-50H35z", true},
    Glyph{0x25B7, "translation", 1.1, "M0 0L105-50 0-100z"},
    Glyph{0x2332, "conical taper", 1.7, "M0-50H170M20 0L140-50 20-100z"},
    Glyph{0x2333, "slope", 1.6, "M0 0H150L0-70z"},
    Glyph{0x221A, "surface texture", 1.3, "M0-45L35 0 130-120"}};

// Letters in circles, from U+24B6 on.
constexpr unsigned kCircledA = 0x24B6;
constexpr std::size_t kLetters = 26;

const std::array<Glyph, kLetters>& Circled() {
  static const std::array<Glyph, kLetters> glyphs = [] {
    std::array<Glyph, kLetters> made{};
    for (std::size_t i = 0; i < kLetters; ++i) {
      made[i] = {kCircledA + static_cast<unsigned>(i), "modifier", 1.6,
                 "M5-50a72 72 0 1 0 144 0a72 72 0 1 0-144 0"};
    }
    made['M' - 'A'].name = "maximum material";
    made['L' - 'A'].name = "least material";
    made['S' - 'A'].name = "regardless of feature size";
    made['P' - 'A'].name = "projected zone";
    made['F' - 'A'].name = "free state";
    made['T' - 'A'].name = "tangent plane";
    made['U' - 'A'].name = "unequally disposed";
    made['R' - 'A'].name = "reciprocity";
    return made;
  }();
  return glyphs;
}

const Glyph* GlyphOf(unsigned code) {
  if (code < 0x80) return nullptr;
  if (code >= kCircledA && code < kCircledA + kLetters) return &Circled()[code - kCircledA];
  const auto found = std::find_if(kGlyphs.begin(), kGlyphs.end(),
                                  [code](const Glyph& glyph) { return glyph.code == code; });
  return found == kGlyphs.end() ? nullptr : &*found;
}

// About how wide a sans serif's character is to its capitals' height.
double WidthOf(unsigned code) {
  if (code < 0x80 && std::strchr(" .,:;'|!/ijlItf()[]", static_cast<int>(code)) != nullptr) {
    return 0.4;
  }
  if (code == '%' || code == 'm' || code == 'M' || code == 'W' || code >= 0x2000) return 1.2;
  return code >= 'A' && code <= 'Z' ? 0.98 : 0.79;
}

void PrintDefinition(Html& page, const Glyph& glyph) {
  char size[64];
  std::snprintf(size, sizeof size, "\" viewBox=\"-5 -125 %.0f 150\">", 100 * glyph.width + 10);
  page.Raw("<symbol id=\"" + IdOf(glyph)).Raw(size).Raw("<path stroke=\"currentColor\" fill=\"");
  page.Raw(glyph.isFilled ? "currentColor" : "none").Raw("\" stroke-width=\"9\" d=\"");
  page.Raw(glyph.stroke).Raw("\"/>");
  if (glyph.code >= kCircledA && glyph.code < kCircledA + kLetters) {
    page.Raw("<text x=\"77\" y=\"-17\" font-size=\"92\" text-anchor=\"middle\" stroke=\"none\" ");
    page.Raw("fill=\"currentColor\" font-family=\"Arial, sans-serif\">");
    page.Raw(std::string(1, static_cast<char>('A' + (glyph.code - kCircledA)))).Raw("</text>");
  }
  page.Raw("</symbol>\n");
}

}  // namespace

std::vector<Run> RunsOf(const std::string& text) {
  const std::string clean = text::OneLine(text);
  std::vector<Run> runs;
  for (std::string_view rest = clean; !rest.empty();) {
    unsigned code = 0;
    const std::size_t length = text::Character(rest, code);
    const Glyph* glyph = GlyphOf(code);
    if (glyph != nullptr) {
      runs.push_back({glyph, "", glyph->width + 0.15});
    } else {
      if (runs.empty() || runs.back().glyph != nullptr) runs.push_back({nullptr, "", 0});
      runs.back().text += rest.substr(0, length);
      runs.back().width += WidthOf(code);
    }
    rest.remove_prefix(length);
  }
  return runs;
}

double WidthOf(const std::vector<Run>& runs) {
  double width = 0;
  for (const Run& run : runs) width += run.width;
  return width;
}

std::string IdOf(const Glyph& glyph) {
  char id[16];
  std::snprintf(id, sizeof id, "glyph-%x", glyph.code);
  return id;
}

void PrintGlyphs(Html& page) {
  page.Raw("<svg width=\"0\" height=\"0\" class=\"glyphs\" aria-hidden=\"true\">\n");
  for (const Glyph& glyph : kGlyphs) PrintDefinition(page, glyph);
  for (const Glyph& glyph : Circled()) PrintDefinition(page, glyph);
  page.Raw("</svg>\n");
}

void PrintSigns(Html& page, const std::string& text) {
  for (const Run& run : RunsOf(text)) {
    if (run.glyph == nullptr) {
      page.Text(run.text);
      continue;
    }
    char size[32];
    std::snprintf(size, sizeof size, " width=\"%.2fem\"", run.glyph->width * 0.715 + 0.07);
    page.Raw("<svg class=\"glyph\" role=\"img\" height=\"1.07em\"").Raw(size);
    page.Raw("><title>").Raw(run.glyph->name).Raw("</title><use href=\"#" + IdOf(*run.glyph));
    page.Raw("\"/></svg>");
  }
}

}  // namespace html
