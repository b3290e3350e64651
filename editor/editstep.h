/// @file
/// Making a step of the history of what a gesture does.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "editor/model/history.h"
#include "qilib/change.h"
#include "viewkit/vkgraph.h"

/// What a step changed of the graph: arcs, a node, and where all lies. It goes when the graph is cleared.
class GraphChange final : public StepPicture {
 public:
  using Ends = std::pair<VkNode*, VkNode*>;  ///< parent, child

  explicit GraphChange(VkGraph& graph) : graph_(graph) {}
  /// Nodes were moved, and nothing else.
  GraphChange(VkGraph& graph, const VkGraph::Moved& moved) : graph_(graph), places_(moved) {}

  // Each changes the graph and notes it.
  void addArc(VkNode* parent, VkNode* child);
  void removeArc(VkNode* parent, VkNode* child);
  VkNode* addNode(std::unique_ptr<VkNode> node);
  /// Takes down what came to lie elsewhere.
  void arranged(VkGraph::Moved moved) { places_ = std::move(moved); }

  void undo() override;
  void redo() override;
  std::size_t bytes() const override;

 private:
  void exchangeArcs(const std::vector<Ends>& gone, const std::vector<Ends>& back);
  std::vector<VkNode*> shownNodes() const;

  VkGraph& graph_;
  std::vector<Ends> added_, removed_;
  VkNode* newNode_ = nullptr;
  std::unique_ptr<VkNode> keptNode_;  ///< the new node while it is not in the graph
  VkGraph::Moved places_;
};

/// A step while it is made: records the edits of the current scene from when it is made on, and takes care of
/// what they change of the graph. Without done(), there is no step.
class EditStep {
 public:
  /// @param graph, history  outlive the history's steps.
  EditStep(VkGraph& graph, History& history);
  /// When an exception ends the step, scene and graph are as before it.
  ~EditStep();
  EditStep(const EditStep&) = delete;
  EditStep& operator=(const EditStep&) = delete;

  GraphChange& picture() { return *picture_; }
  /// All is as it will stay. @param label  see Step::label.
  void done(std::string label);
  /// The edit was refused: nothing more is recorded.
  void refused() { recording_.reset(); }

 private:
  History& history_;
  VkGraph& graph_;
  std::unique_ptr<GraphChange> picture_;
  std::optional<qi::Recording> recording_;
  const int exceptions_;  ///< under way when the step began
};
