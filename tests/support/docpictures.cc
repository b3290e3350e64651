/// @file
/// Takes the guide's pictures of the window and of the dialogs anew.
///
///     docpictures SCENES PICTURES
///
/// SCENES holds harbour.quil and city.quil, PICTURES is the folder that the pictures are written to.
#include <exception>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

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

/// The menu items that bring up the options of the converters, and their dialogs.
const std::pair<std::vector<std::string>, std::string> kConverters[] = {
    {{"KAVO tool", "Convert to KAVO DL", "Set Options and Go"}, "quil2gfxDialog"},
    {{"QUIL2 tool", "Convert to ZEX", "Set Options and Go"}, "quil2zexDialog"},
};

/// An editor on a screen of its own.
class Camera {
 public:
  Camera(const fs::path& scenes, const fs::path& pictures, int depth = 24, std::string geometry = "")
      : scenes_(fs::absolute(scenes)),
        pictures_(fs::absolute(pictures)),
        server_(depth),
        manager_(server_),
        editor_(server_, started(std::move(geometry))) {}

  /// The window, and what it shows of the harbour.
  void takeWindow() {
    editor_.toggleEditMode();
    openHarbour();
    const support::GraphState::Arc arc = editor_.graph().arcs.front();
    editor_.selectArc(arc.parent, arc.child);
    take("mainWindow", "editor");
    goTo("mat_3");
    take("mainWindow", "neighbourhood");
    goTo("obj_17");
    editor_.key("Menu");
    editor_.await("nodeMenu/Values");
    take("mainWindow", "menu");
    editor_.driver().key("Escape");
    editor_.settle();
    goTo("mat_3");
    editor_.key("1");
    editor_.settle();
    take("mainWindow", "showonly");
    editor_.key("F1");
    editor_.await("keysDialog/text");
    take("keysDialog", "keys");
  }

  void takeFolded() {
    openHarbour();
    for (const char* const node : {"obj_17", "obj_3"}) {
      goTo(node);
      editor_.key("minus");
    }
    deselect();
    take("mainWindow", "folded");
  }

  void takeLinks() {
    openHarbour();
    editor_.chooseMenu({"View", "Links"});
    goTo("mat_1");
    take("mainWindow", "links");
  }

  /// A texture that was unlinked, with its picture.
  void takeUnlinked() {
    editor_.chooseMenu({"View", "Display Texture Image"});
    editor_.toggleEditMode();
    openHarbour();
    editor_.selectArc("mat_1", "tex_0");
    editor_.key("Delete");
    editor_.chooseMenu({"View", "Unlinked Records"});
    editor_.chooseMenu({"View", "Arrange Again"});
    editor_.settle();
    editor_.key("0");
    goTo("tex_5");  // beside it, and higher
    deselect();
    take("mainWindow", "unlinked");
  }

  void takeCity() {
    editor_.open(scenes_ / "city.quil");
    take("mainWindow", "compact");
    editor_.click("strip/zoomFit");
    take("mainWindow", "compact-fit");
    type("mat_16");
    editor_.driver().key("Return", {"Control_L"});
    take("mainWindow", "found");
    editor_.driver().key("Escape");
    deselect();
    editor_.key("0");
    for (const char* const node : {"obj_584", "obj_585", "obj_586", "obj_587", "obj_588"}) {
      goTo(node);
      editor_.key("minus");
    }
    deselect();
    editor_.key("Home");
    take("mainWindow", "compact-folded");
  }

  void takeDialogs() {
    editor_.toggleEditMode();  // without it each says that nothing will be written
    std::string open;
    for (const auto& [scene, node, dialog, picture] : kDialogs) {
      if (open != scene) editor_.open(support::project_file("tests/data") / (scene + std::string(".quil")));
      open = scene;
      editor_.doubleClickNode(node);
      take(dialog, picture);
      close(dialog);
    }
    openHarbour();  // the display-list converter takes version 1 only
    for (const auto& [menu, dialog] : kConverters) {
      editor_.chooseMenu(menu);
      take(dialog, "dialog_" + dialog.substr(0, dialog.find("Dialog")));
      close(dialog);
    }
  }

  /// Textures as this screen shows them.
  void takeTextures(const std::string& picture) {
    editor_.chooseMenu({"View", "Display Texture Image"});
    openHarbour();
    goTo("tex_1");
    deselect();
    take("mainWindow", picture);
  }

 private:
  static support::Program::Start started(std::string geometry) {
    support::Program::Start start{.executable = {},
                                  .arguments = {"-xrm", "quileditor.trueColorTextures: True", "-xrm",
                                                "quileditor*glide: False"}};  // nothing is on its way
    if (!geometry.empty()) start.arguments.insert(start.arguments.end(), {"-geometry", std::move(geometry)});
    return start;
  }

  void openHarbour() { editor_.open(scenes_ / "harbour.quil"); }
  /// None is paler than the others then.
  void deselect() { editor_.key("Escape"); }
  /// Writes into the find field.
  void type(const std::string& text) {
    editor_.settle();
    editor_.key("f", {"Control_L"});
    editor_.awaitAt("strip/find", [](const support::WidgetInfo& w) { return w.focused; });
    editor_.driver().type(text);
  }
  /// Finds a node, and selects it.
  void goTo(const std::string& node) {
    type(node);
    editor_.driver().key("Escape");
    editor_.settle();
  }
  /// Takes the picture of a widget and what is in it.
  void take(const std::string& widget, const std::string& name) {
    editor_.driver().moveTo({0, 0});
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

  fs::path scenes_, pictures_;
  support::XServer server_;
  support::WindowManager manager_;
  support::Editor editor_;
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "usage: docpictures SCENES PICTURES\n";
    return 2;
  }
  try {
    Camera(argv[1], argv[2]).takeWindow();
    Camera(argv[1], argv[2]).takeDialogs();
    Camera(argv[1], argv[2]).takeFolded();
    Camera(argv[1], argv[2]).takeLinks();
    Camera(argv[1], argv[2]).takeUnlinked();
    Camera(argv[1], argv[2]).takeCity();
    for (const int depth : {8, 16, 24})
      Camera(argv[1], argv[2], depth, "1050x420").takeTextures("textures-" + std::to_string(depth));
    return 0;
  } catch (const std::exception& problem) {
    std::cerr << "docpictures: " << problem.what() << "\n";
    return 1;
  }
}
