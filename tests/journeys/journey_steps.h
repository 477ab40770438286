// The steps of a walk, by what they need of the window.
#pragma once

#include "journeys/journey_walk.h"

/// A kind of step, by the function that does it and its weight.
#define STEP(act, weight) \
  StepKind { #act, weight, act }

namespace veldrin::test {

/// Looking: mouse and keys in the views, the tree and the show. None of them changes the catalogue, apart
/// from a folder's name that was being typed.
std::span<const StepKind> ViewSteps();
/// Commands on records and folders.
std::span<const StepKind> CommandSteps();
/// Dialogs, Form View and Add New.
std::span<const StepKind> DialogSteps();
/// What happens outside of the window.
std::span<const StepKind> WorldSteps();

}  // namespace veldrin::test
