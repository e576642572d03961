#pragma once

/// @file
/// Traversal of a tree.

#include <OpenSG/OSGNode.h>
#include <OpenSG/OSGTypedFunctors.h>

#include <vector>

namespace osg {

/// What callbacks of a traversal return.
class Action {
  public:
    enum ResultE {
        Continue, ///< go on with the children
        Skip,     ///< go on, but not with the children
        Quit      ///< end the traversal
    };
};

typedef TypedFunctor1Base<Action::ResultE, CPtrRefCallArg<NodePtr>> TraverseEnterFunctor;
typedef TypedFunctor2Base<Action::ResultE, CPtrRefCallArg<NodePtr>, Action::ResultE>
    TraverseLeaveFunctor;

/// Visits a tree depth first, parents before children, children in order, whatever their traversal
/// masks. Returns Quit when a callback did, else Continue.
///
/// `enter` is called once, with null, for a null root. Children lists are walked as they are at the
/// time: callbacks do not add or remove children.
Action::ResultE traverse(const NodePtr& root, TraverseEnterFunctor enter);

/// The same. `leave` is called for a node when all is done below it, with what `enter` returned for
/// it, or with Quit when the traversal was ended at it or below; it may end the traversal too.
Action::ResultE traverse(const NodePtr& root, TraverseEnterFunctor enter,
                         TraverseLeaveFunctor leave);

/// One tree after the other, until a callback returns Quit.
Action::ResultE traverse(const std::vector<NodePtr>& roots, TraverseEnterFunctor enter);
Action::ResultE traverse(const std::vector<NodePtr>& roots, TraverseEnterFunctor enter,
                         TraverseLeaveFunctor leave);

} // namespace osg
