/// @file
/// What an edit changed of a scene, as a value: it can be taken back and made again.
#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

#include "qilib/lists.h"
#include "qilib/pieces.h"
#include "qilib/qis.h"

namespace qi {

/// The difference between a scene before and after some edits. It holds no more than what differs: of a
/// record the words and the array entries that changed, of a list the records that were added.
class Change {
 public:
  /// A part of the scene that is compared and replaced by itself.
  struct Unit {
    std::size_t list = 0;     ///< 0: the file's header; else the list's place in kLists, from 1
    std::uint64_t place = 0;  ///< 0: what the list says of itself, with the number of its records; else a
                              ///< record's number, from 1
    friend auto operator<=>(const Unit&, const Unit&) = default;
  };

  /// Whether nothing differs.
  bool empty() const { return units_.empty(); }
  /// The memory that it takes.
  std::size_t bytes() const;

  /// Gives the scene, which is as the edits left it, the contents that it had before them. Costs what the
  /// edits changed, however large the scene is. When memory runs out (std::bad_alloc), the scene stays as it
  /// was; likewise for redo.
  void undo(Qis& scene) const { apply(scene, &Patch::before, &Patch::after); }
  /// Gives the scene, which is as it was before the edits, the contents that they left.
  void redo(Qis& scene) const { apply(scene, &Patch::after, &Patch::before); }

 private:
  friend class Recording;

  /// The bytes of a piece that differ, from `at` on.
  struct Patch {
    PieceKey key;
    std::size_t at;
    std::vector<std::byte> before, after;
    bool whole = false;  ///< all of the piece, whatever it holds: the record consists of other pieces now
  };
  struct UnitChange {
    Unit unit;
    std::vector<Patch> patches;
  };

  void apply(Qis& scene, std::vector<std::byte> Patch::*wanted, std::vector<std::byte> Patch::*held) const;

  std::vector<UnitChange> units_;  ///< a list before its records
};

/// Records the edits of a scene from when it is made on. There is one at a time for a scene.
///
/// It keeps what the edits are about to change, and they tell it (see about_to_change); what they append to
/// lists it finds by itself.
///
/// When an exception, such as that of a lack of memory, ends the edits and the recording with them, the scene
/// gets back the contents that it had: no edit is ever half done.
class Recording {
 public:
  explicit Recording(Qis& scene);
  ~Recording();
  Recording(const Recording&) = delete;
  Recording& operator=(const Recording&) = delete;

  /// What differs now. Nothing more is recorded.
  Change finish();

 private:
  friend class Change;
  friend void about_to_change(Qis& scene, Word record_tag, Word number);

  struct Held {
    PieceKey key;
    std::size_t unit;
    std::vector<std::byte> bytes;
  };
  using Image = std::vector<Held>;

  Image image_of(Change::Unit unit);
  void keep(Change::Unit unit);
  void take_back() noexcept;
  void stop();
  std::vector<Change::Patch> differences(Change::Unit unit, const Image& before);
  /// Of a record that consists of other pieces now: another one has taken its place.
  static std::vector<Change::Patch> replacements(const Image& before, const Image& now);

  Qis& scene_;
  std::map<Change::Unit, Image> before_;
  std::array<std::size_t, kCoreLists + kExtLists> counts_{};  ///< of records, in the order of kLists
  const int exceptions_;                                      ///< under way when the recording began
};

/// To be called before a record, or its entry in the size table, is changed. Appending needs no call. Nothing
/// happens unless the scene is being recorded, or when there is no such record.
void about_to_change(Qis& scene, Word record_tag, Word number);

/// A number that tells the contents of a record: it changes with them, and comes back with them.
std::uint64_t fingerprint(Qis& scene, Word record_tag, Word number);

}  // namespace qi
