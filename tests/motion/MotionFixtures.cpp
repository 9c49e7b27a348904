#include "MotionFixtures.h"

QByteArray motionFile()
{
    return R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE ozxmlscene>
<ozml version="5.8">

<build></build>
<description></description>

<scene>
	<sceneSettings>
		<width>1920</width>
		<height>1080</height>
		<duration>300</duration>
		<frameRate>29.97</frameRate>
		<NTSC>1</NTSC>
		<pixelAspectRatio>1</pixelAspectRatio>
	</sceneSettings>
	<scenenode name="Objekt — 日本" id="10009">
		<text> two  blanks </text>
	</scenenode>
</scene>
</ozml>
)";
}
