/// @file
/// Comparing records with what they were, piece by piece, and replacing what differs.
#include "qilib/change.h"

#include <algorithm>
#include <cstring>
#include <exception>
#include <new>
#include <string_view>
#include <utility>

namespace qi {
namespace {

using Bytes = std::vector<std::byte>;

// The words of a list itself, with the number of its records; and a record, with its entry in the size table.
void visit_in(Scene& scene, std::uint64_t place, PieceWalk& walk_pieces) {
  if (place == 1) walk(walk_pieces, scene);
}
template <class R>
void visit_in(List<R>& list, std::uint64_t place, PieceWalk& walk_pieces) {
  if (place == 0) {
    walk_pieces.fixed(list.header);
    walk_pieces.count(list.records.size(), [&](std::size_t n) {
      list.records.resize(n);
      list.sizes.resize(n);
    });
  } else if (place <= list.records.size()) {
    if (place <= list.sizes.size()) walk_pieces.fixed(list.sizes[place - 1]);
    walk(walk_pieces, list.records[place - 1]);
  }
}
template <class R1, class R2>
void visit_in(TwoKindList<R1, R2>& /*list*/, std::uint64_t /*place*/, PieceWalk& /*walk_pieces*/) {
  // No edit changes these.
}

void visit_header(Header& header, PieceWalk& walk_pieces) {
  walk_pieces.fixed(header.fixed);
  walk_pieces.fixed(header.ext_sizes);
  // What the block holds after the copy of the table, no edit changes.
  walk_pieces.run(
      std::as_writable_bytes(std::span(header.block1).first(std::min(header.block1.size(), kExtLists))));
}

void visit_unit(Qis& scene, Change::Unit unit, PieceVisitor& visitor) {
  PieceWalk walk_pieces(visitor);
  if (unit.list == 0) visit_header(scene.header, walk_pieces);
  std::size_t number = 0;
  for_each_list(scene, [&](const ListInfo& /*info*/, auto& list) {
    if (++number == unit.list) visit_in(list, unit.place, walk_pieces);
  });
}

/// Puts `inserted` in the place of `removed` bytes of a piece. One that is too short for that is not what the
/// change was made from, and stays as it is.
void splice(Piece& piece, std::size_t at, std::size_t removed, const Bytes& inserted) {
  const std::size_t size = piece.bytes().size();
  if (at > size || removed > size - at) return;
  const std::size_t tail = size - at - removed;
  const std::size_t new_size = at + inserted.size() + tail;
  if (new_size > size) piece.resize(new_size);
  const std::span<std::byte> bytes = piece.bytes();
  if (bytes.size() < new_size) return;
  if (tail != 0) std::memmove(&bytes[at + inserted.size()], &bytes[at + removed], tail);
  std::ranges::copy(inserted, bytes.begin() + static_cast<std::ptrdiff_t>(at));
  if (new_size < size) piece.resize(new_size);
}

/// Gives a piece that content alone.
void replace(Piece& piece, const Bytes& content) {
  if (piece.bytes().size() != content.size()) piece.resize(content.size());
  if (piece.bytes().size() == content.size()) std::ranges::copy(content, piece.bytes().begin());
}

std::size_t common_start(std::span<const std::byte> a, std::span<const std::byte> b, std::size_t unit) {
  const auto same = static_cast<std::size_t>(std::ranges::mismatch(a, b).in1 - a.begin());
  return same - same % unit;
}

std::size_t common_end(std::span<const std::byte> a, std::span<const std::byte> b, std::size_t unit) {
  const auto same =
      static_cast<std::size_t>(std::mismatch(a.rbegin(), a.rend(), b.rbegin(), b.rend()).first - a.rbegin());
  return same - same % unit;
}

Bytes bytes_of(std::span<const std::byte> bytes) { return {bytes.begin(), bytes.end()}; }

/// The place of a list in kLists from 1, and of a record in it.
Change::Unit unit_of(Qis& scene, Word record_tag, Word number) {
  Change::Unit unit{0, std::uint64_t{number} + 1};
  std::size_t place = 0;
  for_each_list(scene, [&](const ListInfo& info, const auto& /*list*/) {
    ++place;
    if (info.tag == list_of(record_tag)) unit.list = place;
  });
  return unit;
}

}  // namespace

std::size_t Change::bytes() const {
  std::size_t bytes = 0;
  for (const UnitChange& change : units_) {
    bytes += sizeof change;
    for (const Patch& patch : change.patches)
      bytes += sizeof patch + patch.before.size() + patch.after.size();
  }
  return bytes;
}

void Change::apply(Qis& scene, Bytes Patch::*wanted, Bytes Patch::*held) const {
  class Applier final : public PieceVisitor {
   public:
    Applier(std::span<const Patch> patches, Bytes Patch::*wanted_side, Bytes Patch::*held_side)
        : patches_(patches), wanted_(wanted_side), held_(held_side) {}

    void visit(const PieceKey& key, Piece& piece) override {
      // Those of parts that are gone find no piece.
      while (!patches_.empty() && patches_.front().key < key) patches_ = patches_.subspan(1);
      if (patches_.empty() || patches_.front().key != key) return;
      const Patch& patch = patches_.front();
      if (patch.whole) {
        replace(piece, patch.*wanted_);
      } else {
        splice(piece, patch.at, (patch.*held_).size(), patch.*wanted_);
      }
    }

   private:
    std::span<const Patch> patches_;
    Bytes Patch::*wanted_;
    Bytes Patch::*held_;
  };

  Recording halfway(scene);
  for (const UnitChange& change : units_) halfway.keep(change.unit);
  for (const UnitChange& change : units_) {
    Applier applier(change.patches, wanted, held);
    visit_unit(scene, change.unit, applier);
  }
}

Recording::Recording(Qis& scene) : scene_(scene), exceptions_(std::uncaught_exceptions()) {
  keep({});
  std::size_t number = 0;
  for_each_list(scene, [&](const ListInfo& /*info*/, const auto& list) {
    counts_.at(number++) = record_count(list);
    keep({number, 0});
  });
  scene.recording_link.recording = this;
}

Recording::~Recording() {
  stop();
  if (std::uncaught_exceptions() > exceptions_) take_back();
}

void Recording::take_back() noexcept {
  class Restorer final : public PieceVisitor {
   public:
    explicit Restorer(std::span<const Held> pieces) : pieces_(pieces) {}

    void visit(const PieceKey& key, Piece& piece) override {
      while (!pieces_.empty() && pieces_.front().key < key) pieces_ = pieces_.subspan(1);
      if (!pieces_.empty() && pieces_.front().key == key)
        splice(piece, 0, piece.bytes().size(), pieces_.front().bytes);
      else if (piece.unit() != 0)
        piece.resize(0);
    }

   private:
    std::span<const Held> pieces_;
  };

  try {
    for (const auto& [unit, image] : before_) {
      Restorer restorer(image);
      visit_unit(scene_, unit, restorer);
    }
  } catch (const std::bad_alloc&) {
    // Arrays become as long as they were and keep their memory meanwhile, so this doesn't come about.
  }
}

void Recording::stop() {
  if (scene_.recording_link.recording == this) scene_.recording_link.recording = nullptr;
}

Recording::Image Recording::image_of(Change::Unit unit) {
  class Keeper final : public PieceVisitor {
   public:
    explicit Keeper(Image& image) : image_(image) {}
    void visit(const PieceKey& key, Piece& piece) override {
      image_.push_back({key, piece.unit(), bytes_of(piece.bytes())});
    }

   private:
    Image& image_;
  };

  Image image;
  Keeper keeper(image);
  visit_unit(scene_, unit, keeper);
  return image;
}

void Recording::keep(Change::Unit unit) {
  if (!before_.contains(unit)) before_.emplace(unit, image_of(unit));
}

std::vector<Change::Patch> Recording::differences(Change::Unit unit, const Image& before) {
  class Comparer final : public PieceVisitor {
   public:
    explicit Comparer(std::span<const Held> before_pieces) : before_(before_pieces) {}

    void visit(const PieceKey& key, Piece& piece) override {
      skip_until(key);
      if (!before_.empty() && before_.front().key == key) {
        compare(before_.front(), piece);
        before_ = before_.subspan(1);
      } else {
        add({key, 0, absent(piece.unit(), piece.bytes().size()), bytes_of(piece.bytes())});
      }
    }
    std::vector<Change::Patch> take() {
      for (; !before_.empty(); before_ = before_.subspan(1)) add_gone(before_.front());
      return std::move(patches_);
    }

   private:
    /// What stands for a piece that isn't there: nothing, or, where the length is fixed, as many bytes.
    static Bytes absent(std::size_t unit_bytes, std::size_t size) {
      return Bytes(unit_bytes == 0 ? size : 0);
    }

    void add(Change::Patch patch) {
      if (!patch.before.empty() || !patch.after.empty()) patches_.push_back(std::move(patch));
    }
    void add_gone(const Held& held) { add({held.key, 0, held.bytes, absent(held.unit, held.bytes.size())}); }
    void skip_until(const PieceKey& key) {
      for (; !before_.empty() && before_.front().key < key; before_ = before_.subspan(1))
        add_gone(before_.front());
    }
    void compare(const Held& held, Piece& piece) {
      const std::span<const std::byte> old = held.bytes;
      const std::span<const std::byte> now = piece.bytes();
      if (std::ranges::equal(old, now)) return;
      const std::size_t unit_bytes = std::max<std::size_t>(1, held.unit);
      const std::size_t start = common_start(old, now, unit_bytes);
      const std::size_t end = common_end(old.subspan(start), now.subspan(start), unit_bytes);
      add({held.key, start, bytes_of(old.subspan(start, old.size() - start - end)),
           bytes_of(now.subspan(start, now.size() - start - end))});
    }

    std::span<const Held> before_;
    std::vector<Change::Patch> patches_;
  };

  const Image now = image_of(unit);
  const auto same_sort = [](const Held& a, const Held& b) {
    return a.key == b.key && a.unit == b.unit && (a.unit != 0 || a.bytes.size() == b.bytes.size());
  };
  if (!before.empty() && !now.empty() && !std::ranges::equal(before, now, same_sort))
    return replacements(before, now);
  Comparer comparer(before);
  visit_unit(scene_, unit, comparer);
  return comparer.take();
}

std::vector<Change::Patch> Recording::replacements(const Image& before, const Image& now) {
  std::map<PieceKey, Change::Patch> patches;
  const auto patch = [&](const PieceKey& key) -> Change::Patch& {
    return patches.try_emplace(key, Change::Patch{key, 0, {}, {}, true}).first->second;
  };
  for (const Held& held : before) patch(held.key).before = held.bytes;
  for (const Held& held : now) patch(held.key).after = held.bytes;
  std::vector<Change::Patch> all;
  for (auto& [key, made] : patches) all.push_back(std::move(made));
  return all;
}

Change Recording::finish() {
  stop();
  // Records that were appended come out as made of nothing.
  std::size_t number = 0;
  for_each_list(scene_, [&](const ListInfo& /*info*/, const auto& list) {
    const std::size_t held = counts_.at(number++);
    for (std::size_t i = held; i < record_count(list); ++i) before_.try_emplace({number, i + 1});
  });
  Change change;
  for (const auto& [unit, image] : before_)
    if (auto patches = differences(unit, image); !patches.empty())
      change.units_.push_back({unit, std::move(patches)});
  before_.clear();
  return change;
}

void about_to_change(Qis& scene, Word record_tag, Word number) {
  Recording* const recording = scene.recording_link.recording;
  if (!recording) return;
  const Change::Unit unit = unit_of(scene, record_tag, number);
  if (unit.list != 0 && number < recording->counts_.at(unit.list - 1)) recording->keep(unit);
}

std::uint64_t fingerprint(Qis& scene, Word record_tag, Word number) {
  class Hasher final : public PieceVisitor {
   public:
    void visit(const PieceKey& key, Piece& piece) override {
      for (const std::uint32_t word : key) add(std::as_bytes(std::span(&word, 1)));
      add(piece.bytes());
    }
    std::uint64_t hash = 0xcbf29ce484222325;

   private:
    void add(std::span<const std::byte> bytes) {
      for (const std::byte byte : bytes) hash = (hash ^ std::to_integer<std::uint64_t>(byte)) * 0x100000001b3;
    }
  };

  Hasher hasher;
  visit_unit(scene, unit_of(scene, record_tag, number), hasher);
  return hasher.hash;
}

}  // namespace qi
