#pragma once

#include "widgets/FileDropTarget.h"

/// Where Motion files are dropped: the Edit module.
class dropZone1 : public FileDropTarget
{
    Q_OBJECT

public:
    using FileDropTarget::FileDropTarget;
};
