// The folder in which a run keeps the disc that was there: "dvd.earlier" for the output folder
// "dvd", beside it and so on the same disk, and out of the image, which takes every file of the
// output folder. While the run goes on the folder is locked, so that no other run, of another
// program folder either, works there. It vanishes with the run.
//
// It says by itself what belongs where, so that any program that is to author there can set things
// in order after a run that died:
//
//   corvane.lock          held while the run goes on, and given the time of now by it
//   VIDEO_TS ...          the parts of the earlier disc (authoring/run_record.h)
//   run.txt               the record; parts that it names and that lie here go back, what stands in
//                         the place of any part is the run's and goes, or is kept if the run died
//                         and it may be somebody else's
//   done.txt              instead of it: the new disc is complete, what lies here goes
//   left.txt              instead of it: something could not be put back; what stands in its place
//                         by now may be somebody's own and stays
#pragma once

#include "authoring/run_record.h"
#include "platform/files/folder_lock.h"
#include "platform/result.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// What was done to set a run's output folder in order.
struct place_settled {
  bool brought_back = false;          ///< parts of an earlier disc
  bool removed = false;               ///< what the run had made
  std::vector<std::string> kept;      ///< what was moved away instead, as sentences
  std::vector<std::string> troubles;  ///< what could not be done, as sentences
};

class run_place {
 public:
  /// Of the output folder `out` in the folder `path` (both native); touches nothing.
  run_place(std::string out, std::string path);

  const std::string& out() const { return out_; }
  const std::string& path() const { return path_; }

  /// Locks the folder, which is there. False when another run holds it. Where a file system knows
  /// no locks it is taken without.
  bool take();

  /// Writes the record and puts the parts that it names aside. When it fails, `bring_back` is due.
  failure put_aside(const run_record& record);

  /// To be called as long as the run goes on. Should it die, all that was changed before the last
  /// call is known to be its own.
  void note_alive();

  /// The new disc is complete: the earlier one goes, and so does the folder.
  place_settled complete();

  /// There is no new disc, and the run has just ended: what it made goes, the earlier disc comes
  /// back, and the folder goes.
  place_settled bring_back();

  /// The same by what stands in the folder, for a run that died. Since then anybody may have put
  /// something into the output folder: what was changed last when the run was not seen alive is
  /// moved into "dvd.interrupted" (or one with a number) beside this folder, and nothing of it is
  /// lost.
  place_settled settle_interrupted();

  /// Whether nothing is left to be done here.
  bool is_settled() const;

 private:
  /// What becomes of things that stand where the run works.
  enum class clearing {
    remove,        ///< they are the run's
    remove_known,  ///< those go that are known to be the run's, the others are kept
    none,
  };

  /// The time, by the disk's clock, in which a run that died was seen alive. Nobody else worked in
  /// the output folder then.
  struct life {
    std::int64_t begin = 0, end = 0;
    bool holds(const std::string& path) const;
  };

  std::string in(const std::string& name) const;
  std::optional<life> seen_life() const;
  bool is_known_to_be_the_runs(const std::string& path) const;
  failure clear(const std::string& path, clearing how, place_settled& done);
  failure keep(const std::string& path, place_settled& done);
  void clear_streams(clearing how, place_settled& done);
  void put_back(const std::string& part, clearing how, place_settled& done);
  place_settled bring_back(clearing how);
  void dismantle();

  std::string out_, path_;
  std::optional<run_record> record_;  ///< not before it stands in the folder: what it does not
                                      ///< name would be taken for the run's
  std::unique_ptr<folder_lock> lock_;
  std::chrono::steady_clock::time_point noted_;  ///< the last sign of life
  std::string kept_in_;                          ///< where things are kept, once there are any
};

/// The folders of runs for this output folder that are there (native paths), most often none.
std::vector<std::string> places_of(const std::string& out);

/// Makes and locks a folder for a run: beside the output folder or, `inside`, in it, which is for
/// runs without an image where nothing can be written beside. Fails with the system's reason; gives
/// no place and no reason when another run works there.
result<std::unique_ptr<run_place>> make_place(const std::string& out, bool inside);

}  // namespace corvane
