#pragma once

#include "widgets/FileDropTarget.h"

/// Where Motion files are dropped: the Edit page is one.
class dropZone1 : public FileDropTarget
{
    Q_OBJECT

public:
    using FileDropTarget::FileDropTarget;
};
