/// @file
/// What a step changed of the graph, forwards and backwards.
#include "editor/editstep.h"

#include <exception>
#include <new>

#include "editor/model/currentscene.h"

void GraphChange::addArc(VkNode* parent, VkNode* child) {
  graph_.add(parent, child);
  added_.emplace_back(parent, child);
}

void GraphChange::removeArc(VkNode* parent, VkNode* child) {
  graph_.remove(parent, child);
  removed_.emplace_back(parent, child);
}

VkNode* GraphChange::addNode(std::unique_ptr<VkNode> node) { return newNode_ = graph_.add(std::move(node)); }

void GraphChange::exchangeArcs(const std::vector<Ends>& gone, const std::vector<Ends>& back) {
  for (const auto& [parent, child] : gone) graph_.remove(parent, child);
  for (const auto& [parent, child] : back) {
    graph_.add(parent, child);
    graph_.displayWithChildren(parent);  // either may have been left out meanwhile
  }
}

void GraphChange::undo() {
  exchangeArcs(added_, removed_);
  if (newNode_) keptNode_ = graph_.take(newNode_);
  graph_.arrange(places_.before);
  graph_.showOneOf(shownNodes());
}

void GraphChange::redo() {
  if (keptNode_) graph_.display(graph_.add(std::move(keptNode_)));
  exchangeArcs(removed_, added_);
  graph_.arrange(places_.after);
  graph_.showOneOf(shownNodes());
}

std::size_t GraphChange::bytes() const {
  return sizeof *this + (added_.size() + removed_.size()) * sizeof(Ends) + places_.before.bytes() +
         places_.after.bytes();
}

std::vector<VkNode*> GraphChange::shownNodes() const {
  std::vector<VkNode*> nodes;
  for (const auto* arcs : {&added_, &removed_})
    for (const auto& [parent, child] : *arcs) nodes.insert(nodes.end(), {parent, child});
  if (newNode_ && !keptNode_) nodes.push_back(newNode_);
  if (nodes.empty() && !newNode_)
    for (const VkPlaces::Node& place : places_.after.nodes) nodes.push_back(place.node);
  return nodes;
}

EditStep::EditStep(VkGraph& graph, History& history)
    : history_(history),
      graph_(graph),
      picture_(std::make_unique<GraphChange>(graph)),
      recording_(std::in_place, *qis),
      exceptions_(std::uncaught_exceptions()) {
  graph_.recordPlaces();
}

EditStep::~EditStep() {
  graph_.dropRecord();
  if (!picture_ || std::uncaught_exceptions() == exceptions_) return;
  try {
    picture_->undo();
  } catch (const std::bad_alloc&) {
    // What is drawn of the step stays until the scene is opened again.
  }
}

void EditStep::done(std::string label) {
  picture_->arranged(graph_.recordedPlaces());
  qi::Change change = recording_->finish();
  history_.add({.label = std::move(label), .change = std::move(change), .picture = std::move(picture_)});
}
