#pragma once

#include "widgets/FileDropTarget.h"

/// Where template folders are dropped: the Install page is one.
class dropZone : public FileDropTarget
{
    Q_OBJECT

public:
    using FileDropTarget::FileDropTarget;
};
