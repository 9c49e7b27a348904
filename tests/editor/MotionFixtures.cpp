#include "MotionFixtures.h"

QByteArray motionFile()
{
    return R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE ozxmlscene>
<ozml version="5.8">

<displayversion>5.3.2</displayversion>

<factory id="1" uuid="46c844a813d311d8a438000a95af9f7e">
	<description>Channel</description>
	<manufacturer>Studio &amp; Sons</manufacturer>
	<version>1</version>
</factory>


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
		<backgroundColor red="0" green="0" blue="0" alpha="1"/>
	</sceneSettings>
	<currentFrame>0 1 1 0</currentFrame>
	<timemarkerset/>
	<scenenode name="Glow &quot;wide&quot;" id="10009">
		<text> two  blanks </text>
		<text> </text>
		<parameter name="Objekt — 日本" id="2" flags="8589938704"/>
	</scenenode>
</scene>

</ozml>
)";
}

QByteArray everythingInOne()
{
    return R"(<?xml version="1.0" encoding="UTF-8" standalone='no' ?>
<!-- before - the type --><!DOCTYPE ozxmlscene SYSTEM "motion.dtd" >
<?keep this one?>
<ozml version="5.8" name='"Glow" &amp; more'>

<displayversion>5.3.2</displayversion>
<build></build><description  />
<canvas:view id="&#49;&#x3A;" height='é &lt; 日本'>
	<größe·1>A &gt; B ]] &#13;&#10; "quoted" 😀 it's</größe·1>
	<![CDATA[ <not> & markup ]] ]]>
	<?empty?><!----><layer.1_a-b x = "1"
		y="2	3" />text</canvas:view >
</ozml>
<!-- behind --><?and this?>
)";
}
