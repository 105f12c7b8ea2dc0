#include "writers/html/Pictures.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

#include "report/Clean.h"
#include "writers/html/Projection.h"
#include "writers/html/Signs.h"

namespace html {

namespace {

constexpr std::size_t kMostSigns = 500;          // in a picture
constexpr std::size_t kMostBytes = 1024 * 1024;  // of all pictures, but for the last one

struct Placed {
  const AnnotationReport* annotation;
  const ViewFrameReport* frame;  // null where the annotation has no place
};

// A half space that is shown: where Dot(point - origin, normal) is not negative.
struct HalfSpace {
  Point3 origin, normal;
  double DistanceOf(const Point3& point) const { return Dot(point - origin, normal); }
};

// Writes polylines as the path of an SVG, in whole units of the picture.
class Path {
 public:
  void Move(const Point2& to) {
    pending_ = Round(to);
    isOpen_ = false;
  }
  void Line(const Point2& to) {
    const std::array<long, 2> next = Round(to);
    // What nobody could see.
    if (std::abs(next[0] - Last()[0]) + std::abs(next[1] - Last()[1]) < 2) return;
    if (!isOpen_) {
      path_ += "M" + std::to_string(pending_[0]) + " " + std::to_string(pending_[1]) + "l";
      last_ = pending_;
      isOpen_ = true;
    } else {
      path_ += ' ';
    }
    path_ += std::to_string(next[0] - last_[0]) + " " + std::to_string(next[1] - last_[1]);
    last_ = next;
  }
  std::string Take() { return std::move(path_); }

 private:
  static std::array<long, 2> Round(const Point2& point) {
    return {std::lround(point[0]), std::lround(point[1])};
  }
  const std::array<long, 2>& Last() const { return isOpen_ ? last_ : pending_; }

  std::string path_;
  std::array<long, 2> pending_{}, last_{};
  bool isOpen_ = false;  // a line was drawn since the last move
};

bool IsInside(const Point2& a, const Point2& b) {
  return std::max(a[0], b[0]) >= 0 && std::min(a[0], b[0]) <= kPictureWidth &&
         std::max(a[1], b[1]) >= 0 && std::min(a[1], b[1]) <= kPictureHeight;
}

class Pictures {
 public:
  Pictures(Html& page, const ModelReport& report, const Drawing& drawing, const Names& names)
      : page_(page), report_(report), drawing_(drawing), names_(names) {
    for (const DrawnEdge& edge : drawing.edges) {
      if (edge.isHidden) continue;
      points_.insert(points_.end(), edge.points.begin(), edge.points.end());
    }
    std::vector<double> heights;
    for (const ViewReport& view : report.views) {
      for (const AnnotationReport& annotation : view.annotations) {
        const bool isPlaced = view.frame && annotation.position;
        all_.push_back({&annotation, isPlaced ? &*view.frame : nullptr});
        if (annotation.id) byId_.emplace(*annotation.id, all_.size() - 1);
        if (isPlaced) points_.push_back(ToModel(*view.frame, *annotation.position));
        for (const TextReport& text : annotation.texts) {
          if (text.font && text.font->height > 0) heights.push_back(text.font->height);
        }
      }
    }
    if (heights.empty()) return;
    const auto middle = heights.begin() + static_cast<std::ptrdiff_t>(heights.size() / 2);
    std::nth_element(heights.begin(), middle, heights.end());
    height_ = *middle;
  }

  void Print() {
    page_.Raw("<section id=\"pictures\">\n<h2>Pictures</h2>\n");
    for (const CaptureReport& capture : report_.captures) PrintCapture(capture);
    if (report_.captures.empty()) {
      page_.Raw("<figure id=\"picture\">\n");
      std::vector<Placed> shown;
      for (const Placed& each : all_) {
        if (!each.annotation->hidden.value_or(false)) shown.push_back(each);
      }
      PrintPicture("The part, isometric", shown, Projection::Isometric(points_), {});
      page_.Raw("</figure>\n");
    }
    page_.Raw("</section>\n");
  }

 private:
  void PrintCapture(const CaptureReport& capture) {
    page_.Raw("<figure id=\"picture-" + names_.PlaceOf(&capture) + "\"");
    page_.Attribute("data-picture", names_.Of(capture)).Raw(">\n");
    std::string title = capture.name.value_or("");
    if (title.empty()) title = "Saved view " + names_.Of(capture);
    if (bytes_ > kMostBytes) {
      page_.Raw("<figcaption>").Text(title);
      page_.Raw(": not drawn, the pictures before it fill this page</figcaption>\n</figure>\n");
      return;
    }
    std::optional<Projection> projection;
    if (capture.camera) projection = Projection::Of(*capture.camera);
    if (!projection) {
      title += " (isometric: it has no camera)";
      projection = Projection::Isometric(points_);
    }
    std::optional<HalfSpace> shown;
    if (capture.clippingPlane) {
      const auto& [point, normal] = *capture.clippingPlane;
      // What lies between the viewer and the plane is cut away.
      const double side = Dot(projection->Direction(), normal) < 0 ? -1 : 1;
      shown = HalfSpace{point, side * normal};
    }
    std::vector<Placed> members;
    for (const MemberReport& member : capture.members) {
      const auto found = byId_.find(member.id.value_or(""));
      if (member.id && found != byId_.end()) members.push_back(all_[found->second]);
    }
    PrintPicture(title, members, *projection, shown);
    page_.Raw("</figure>\n");
  }

  void PrintPicture(const std::string& title, const std::vector<Placed>& members,
                    const Projection& projection, const std::optional<HalfSpace>& shown) {
    std::string svg = "<svg role=\"img\" viewBox=\"0 0 1800 1200\" width=\"900\" height=\"600\" ";
    svg += "fill=\"none\" stroke=\"currentColor\">\n<title>";
    svg += Escape(title) + "</title>\n<path class=\"edges\" stroke-opacity=\"0.6\" d=\"";
    svg += Edges(projection, shown) + "\"/>\n<g class=\"signs\">\n";
    std::size_t drawn = 0;
    std::size_t unplaced = 0;
    for (const Placed& member : members) {
      if (member.frame == nullptr) {
        ++unplaced;
      } else if (drawn < kMostSigns) {
        const std::string sign = DrawSign(projection, *member.frame, *member.annotation, height_);
        if (!sign.empty()) ++drawn;
        svg += sign;
      }
    }
    svg += "</g>\n</svg>\n";
    bytes_ += svg.size();
    page_.Raw(svg).Raw("<figcaption>").Text(title);
    page_.Raw(": " + std::to_string(drawn) + " of ");
    page_.Raw(text::Count(static_cast<long>(members.size()), "annotation", "annotations"));
    if (unplaced != 0) page_.Raw(", " + std::to_string(unplaced) + " without a place");
    page_.Raw("</figcaption>\n");
  }

  std::string Edges(const Projection& projection, const std::optional<HalfSpace>& shown) const {
    Path path;
    for (const DrawnEdge& edge : drawing_.edges) {
      if (edge.isHidden) continue;
      std::optional<Point2> last;
      for (std::size_t i = 1; i < edge.points.size(); ++i) {
        Point3 from = edge.points[i - 1];
        Point3 to = edge.points[i];
        const bool isCut = shown && !Clip(*shown, from, to);
        const std::optional<Point2> a = isCut ? std::optional<Point2>() : projection.Place(from);
        const std::optional<Point2> b = isCut ? std::optional<Point2>() : projection.Place(to);
        if (!a || !b || !IsInside(*a, *b)) {
          last.reset();
          continue;
        }
        if (last != a) path.Move(*a);
        path.Line(*b);
        last = b;
      }
    }
    return path.Take();
  }

  // What of a line is shown; false for nothing.
  static bool Clip(const HalfSpace& shown, Point3& from, Point3& to) {
    const double a = shown.DistanceOf(from);
    const double b = shown.DistanceOf(to);
    if (!(a >= 0 || b >= 0)) return false;
    if (a < 0) from = from + a / (a - b) * (to - from);
    if (b < 0) to = to + b / (b - a) * (from - to);
    return true;
  }

  Html& page_;
  const ModelReport& report_;
  const Drawing& drawing_;
  const Names& names_;
  std::vector<Point3> points_;  // of everything
  std::vector<Placed> all_;
  std::unordered_map<std::string, std::size_t> byId_;  // places in `all_`
  // Of texts, in the model's unit; as small as can be read where the document does not say.
  double height_ = 0;
  std::size_t bytes_ = 0;  // of the pictures so far
};

}  // namespace

void PrintPictures(Html& page, const ModelReport& report, const Drawing& drawing,
                   const Names& names) {
  Pictures(page, report, drawing, names).Print();
}

}  // namespace html
