/// @file
/// Takes the guide's pictures of the window and of the records' dialogs anew.
///
///     docpictures SCENES PICTURES
///
/// SCENES holds harbour.quil, PICTURES is the folder that the pictures are written to.
#include <exception>
#include <iostream>
#include <string>

#include "tests/support/editor.h"
#include "tests/support/places.h"
#include "tests/support/wait.h"

namespace {

namespace fs = std::filesystem;

/// A dialog of a node in a scene of tests/data, and the picture that shows it.
struct DialogPicture {
  const char *scene, *node, *dialog, *picture;
};

constexpr DialogPicture kDialogs[] = {
    {"robot", "scene_0", "sceneDialog", "dialog_scene"},
    {"robot", "shape_0", "shapeDialog", "dialog_shape"},
    {"robot", "tex_0", "texDialog", "dialog_tex_v1"},
    {"robot", "obj_0", "objDialog", "dialog_obj_v1"},
    {"robot", "mat_0", "matDialog", "dialog_mat_v1"},
    {"robot", "anim_0", "animDialog", "dialog_anim_v1"},
    {"robot", "light_0", "lightDialog", "dialog_light"},
    {"robot", "cam_0", "camDialog", "dialog_cam"},
    {"robot", "env_0", "envDialog", "dialog_env"},
    {"robot", "part_0", "partDialog", "dialog_part"},
    {"robot", "lod_13", "lodDialog", "dialog_lod"},
    {"skeleton", "tex_0", "texDialog", "dialog_tex"},
    {"skeleton", "obj_0", "objDialog", "dialog_obj"},
    {"skeleton", "mat_0", "matDialog", "dialog_mat"},
    {"skeleton", "anim_0", "animDialog", "dialog_anim"},
    {"skeleton", "ChainRoot_0", "chrootDialog", "dialog_chainroot"},
    {"skeleton", "joint_0", "jointDialog", "dialog_joint"},
    {"skeleton", "effector_0", "effectorDialog", "dialog_effector"},
};

class Camera {
 public:
  Camera(const fs::path& scenes, const fs::path& pictures)
      : harbour_(fs::absolute(scenes) / "harbour.quil"), pictures_(fs::absolute(pictures)) {}

  void takeAll() {
    editor_.toggleEditMode();
    editor_.open(harbour_);
    const support::GraphState::Arc arc = editor_.graph().arcs.front();
    editor_.selectArc(arc.parent, arc.child);
    take("mainWindow", "editor");

    std::string open;
    for (const auto& [scene, node, dialog, picture] : kDialogs) {
      if (open != scene) editor_.open(support::project_file("tests/data") / (scene + std::string(".quil")));
      open = scene;
      editor_.doubleClickNode(node);
      take(dialog, picture);
      close(dialog);
    }
  }

 private:
  /// Takes the picture of a widget and what is in it.
  void take(const std::string& widget, const std::string& name) {
    editor_.settle();
    const fs::path picture = pictures_ / (name + ".png");
    const support::Box box = editor_.await(widget).box;
    const auto size = std::to_string(box.width) + "x" + std::to_string(box.height);
    server_.screenshot(picture, size + "+" + std::to_string(box.x) + "+" + std::to_string(box.y));
    std::cout << picture.string() << "\n";
  }
  void close(const std::string& dialog) {
    editor_.click(dialog + "/buttons/Cancel");
    support::waitFor([&] { return !editor_.asks(dialog); });
  }

  fs::path harbour_, pictures_;
  support::XServer server_;
  support::WindowManager manager_{server_};
  support::Editor editor_{server_};
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "usage: docpictures SCENES PICTURES\n";
    return 2;
  }
  try {
    Camera(argv[1], argv[2]).takeAll();
    return 0;
  } catch (const std::exception& problem) {
    std::cerr << "docpictures: " << problem.what() << "\n";
    return 1;
  }
}
