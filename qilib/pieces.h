/// @file
/// The way over what a record holds in memory, piece by piece: for what must find and replace any of it, and
/// needs to know no kind.
#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <span>
#include <type_traits>
#include <utility>

#include "qilib/listwalk.h"
#include "qilib/qis.h"
#include "qilib/walk.h"

namespace qi {

/// Something in a record that stands in memory as one run of bytes: its fixed words, an array, the number of
/// its parts.
class Piece {
 public:
  virtual std::span<std::byte> bytes() = 0;
  /// The bytes of one of its elements; 0: its length is fixed.
  virtual std::size_t unit() const { return 0; }
  /// Makes it so long, in bytes; a whole number of elements.
  virtual void resize(std::size_t /*bytes*/) {}

 protected:
  ~Piece() = default;
};

/// Tells the pieces of one record apart, in the order of the walk: the piece, and within a piece that holds
/// parts the part, from 1, and the piece of the part.
using PieceKey = std::array<std::uint32_t, 3>;

class PieceVisitor {
 public:
  virtual void visit(const PieceKey& key, Piece& piece) = 0;

 protected:
  ~PieceVisitor() = default;
};

/// The Io (see walk.h) that hands the pieces to a visitor, which may replace them. Parts follow the piece
/// that counts them: when the visitor changes that number, the parts that follow are those.
class PieceWalk {
 public:
  explicit PieceWalk(PieceVisitor& visitor) : visitor_(visitor) {}

  void fixed(auto& f) { run(std::as_writable_bytes(std::span(&f, 1))); }
  void tag(Word /*found*/, Word /*expected*/) {}
  void name_tag(Word /*found*/) {}
  void exact(const auto& /*f*/) {}
  void longer(const auto& /*f*/, Words& rest) { array(rest); }
  void words(auto& v, auto /*n*/) { array(v); }
  void items(auto& v, auto /*n*/) { array(v); }
  void slots(auto& v, auto /*n*/, std::size_t /*bytes*/) { array(v); }
  void pairs(auto& v, auto /*n*/) { array(v); }
  void columns(auto& v, auto /*n*/) { array(v); }
  void bytes(auto& v, auto /*n*/) { array(v); }
  void block(auto& v, auto /*n*/) { array(v); }
  void text(auto& v, auto /*n*/) { array(v); }
  void records(auto& v, auto /*n*/) {
    count(v.size(), [&](std::size_t n) { v.resize(n); });
    for (std::size_t i = 0; i < v.size(); ++i) part(i, [&] { walk(*this, v[i]); });
  }
  void counted(auto& v, auto /*missing*/) { array(v); }
  void blocks(auto& r) {
    array(r.block1);
    array(r.block2);
  }
  void structure(auto& r) {
    blocks(r);
    count(r.ext.has_value(),
          [&](std::size_t n) { n == 0 ? r.ext.reset() : static_cast<void>(r.ext.emplace()); });
    if (!r.ext) return;
    part(0, [&] {
      walk(*this, *r.ext, tiles_of(r));
      array(r.ext->tail);
    });
  }

  /// Bytes that are a piece by themselves.
  void run(std::span<std::byte> bytes) {
    Run piece(bytes);
    visit(piece);
  }
  /// A number that says how many of something there are. `set(n)` is called when the visitor changes it.
  void count(std::size_t held, auto set) {
    std::size_t wanted = held;
    fixed(wanted);
    if (wanted != held) set(wanted);
  }

 private:
  class Run final : public Piece {
   public:
    explicit Run(std::span<std::byte> bytes) : bytes_(bytes) {}
    std::span<std::byte> bytes() override { return bytes_; }

   private:
    std::span<std::byte> bytes_;
  };

  template <class T>
  requires std::is_trivially_copyable_v<T>
  class Array final : public Piece {
   public:
    explicit Array(CompactArray<T>& v) : v_(v) {}
    std::span<std::byte> bytes() override { return std::as_writable_bytes(std::span(v_)); }
    std::size_t unit() const override { return sizeof(T); }
    void resize(std::size_t bytes) override { v_.resize(bytes / sizeof(T)); }

   private:
    CompactArray<T>& v_;
  };

  void array(auto& v) {
    Array piece(v);
    visit(piece);
  }

  void part(std::size_t number, auto walk_part) {
    key_[1] = static_cast<std::uint32_t>(number + 1);
    key_[2] = 0;
    walk_part();
    key_[1] = key_[2] = 0;
  }

  void visit(Piece& piece) {
    ++(key_[1] == 0 ? key_[0] : key_[2]);
    visitor_.visit(key_, piece);
  }

  PieceVisitor& visitor_;
  PieceKey key_{};
};

}  // namespace qi
