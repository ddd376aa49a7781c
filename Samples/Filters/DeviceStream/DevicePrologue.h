#pragma once

#include <string_view>

namespace Samples {

/// PostScript (level 3) that stands in front of a job where no device of the family is at hand: the device's
/// own procedures, on top of any interpreter. Commands find what they call, and what they ask for can be read
/// back from currentpagedevice. A feature that fails is told on the output in one line of the form
/// "%%[ Warning: feature abandoned: typecheck; OffendingCommand: put ]%%". May run more than once; the last
/// run counts.
inline constexpr std::string_view devicePrologue = R"PS(%%BeginResource: procset OrvelDevice 1.0 0
userdict begin

% ---- The page device ----
% The interpreter keeps the entries that shape the image; the device keeps all others, here. The dictionary is
% local: what is set between save and restore ends with the restore, as in the interpreter.
/orvel$own 64 dict def
% The trapping commands copy these two and put into the copies.
orvel$own /PostRenderingEnhance 4 dict put
orvel$own /PostRenderingEnhanceDetails 4 dict put

/orvel$interpreter 2 dict def
orvel$interpreter /setpagedevice systemdict /setpagedevice get put
orvel$interpreter /currentpagedevice systemdict /currentpagedevice get put

% key -> bool: whether the entry is the interpreter's. An interpreter would turn the image for a LeadingEdge;
% on this device it tells the finisher where to fold.
/orvel$isImaging {
  dup /LeadingEdge eq
  {pop false}
  {//orvel$interpreter /currentpagedevice get exec exch known} ifelse
} bind def

% request -> request of the entries that are the interpreter's. A size of the device's own kind is a size.
/orvel$imaging {
  dup length 1 add dict exch {
    1 index orvel$isImaging
    {2 index 3 1 roll put}
    {
      exch /UniversalDetails eq
      {dup /PageSize known {1 index /PageSize 2 index /PageSize get put} if} if
      pop
    } ifelse
  } forall
} bind def

% request -> : remembers the entries that are the device's.
/orvel$keep {
  {
    1 index orvel$isImaging
    {pop pop}
    {//orvel$own 3 1 roll put} ifelse
  } forall
} bind def

% request -> : all of it or, with an error, nothing. What the image does not depend on starts no new page.
/setpagedevice {
  dup orvel$imaging
  dup length 0 gt
  {{//orvel$interpreter /setpagedevice get exec} stopped {pop stop} if}
  {pop} ifelse
  orvel$keep
} bind def

/currentpagedevice {
  //orvel$interpreter /currentpagedevice get exec
  dup length //orvel$own length add dict copy
  //orvel$own exch copy
} bind def

% Some commands write the key as "/ HWResolution": an empty name, and this one to be executed.
/HWResolution {pop /HWResolution} bind def

% tray -> key tray: the entry of a tray in a dictionary.
/orvel$MediaInputTray {/MediaInputTray exch} bind def

% Devices with a patch for the job gather a page device before they set it.
/orvel$pagedevice 16 dict def
/orvel$setpagedevice {
  dup length dict copy
  //orvel$pagedevice {pop //orvel$pagedevice exch undef} forall
  setpagedevice
} bind def

% ---- Features ----
% featurebegin {...} featurecleanup: runs the feature. Whatever it does, and wherever it fails, both stacks are
% as they were, and the job goes on.
/orvel$frame 2 dict def

/featurebegin {
  count array astore
  dup //orvel$frame exch /operands exch put
  aload pop
  //orvel$frame /dictionaries countdictstack array dictstack put
} bind def

/featurecleanup {
  stopped {orvel$abandoned} if
  clear
  cleardictstack
  //orvel$frame /dictionaries get dup length countdictstack sub countdictstack exch getinterval {begin} forall
  //orvel$frame /operands get aload pop
} bind def

/orvel$abandoned {
  (%%[ Warning: feature abandoned: ) print
  $error /newerror get {
    $error /errorname get 128 string cvs print
    (; OffendingCommand: ) print
    $error /command get {128 string cvs} stopped {pop pop (--nostringval--)} if print
    $error /newerror false put
  } {(stop) print} ifelse
  ( ]%%\n) print flush
} bind def

% ---- Color ----
/orvel$VirtualColorDevice << /ColorTransform /Automatic /Type 0 >> def
/orvel$VCDOptions << /Grayline /Automatic >> def
/orvel$grayline /Automatic def
/orvel$BaseSaturation 0.0 def
/orvel$Transform <<
  /Lightness 0 /Contrast 0 /Saturation 0 /CastCyan 0 /CastMagenta 0 /CastYellow 0
>> def
/orvel$automaticCIE1Limit 1.0 def
/orvel$automaticCIE3Limit 1.0 def
/orvel$automaticCIE4Limit 1.0 def

% An intent for each source color space, for text and graphics and for images.
/orvel$GrayGraphicsTransform << /Intent /None >> def
/orvel$GrayImagesTransform << /Intent /None >> def
/orvel$SpotGraphicsTransform << /Intent /None >> def
/orvel$SpotImagesTransform << /Intent /None >> def
/orvel$RGBGraphicsTransform << /Intent /None >> def
/orvel$RGBImagesTransform << /Intent /None >> def
/orvel$CMYKGraphicsTransform << /Intent /None >> def
/orvel$CMYKImagesTransform << /Intent /None >> def
/orvel$CIEGraphicsTransform << /Intent /None >> def
/orvel$CIEImagesTransform << /Intent /None >> def

% Other devices number them from 1: RGB, CMYK and spot colors, each with its images behind it.
/orvel$Intent [null (Automatic) (Automatic) (Automatic) (Automatic) (Automatic) (Automatic)] def
% The job's adjustments, in slot 0.
/orvel$Lightness [0] def
/orvel$Contrast [0] def
/orvel$Saturation [0] def
/orvel$CyanRed [0] def
/orvel$MagentaGreen [0] def
/orvel$YellowBlue [0] def

% ---- Covers ----
/orvel$booklet_job false def
/orvel$CoverPageSource 0 def
% covers source setcoverpages: 1 is a cover in front, 2 and 3 are covers in front and behind.
/RRCustomProcs <<
  /setcoverpages {
    //orvel$own exch /CoverPageSource exch put
    //orvel$own exch /CoverPages exch put
  } bind
>> /ProcSet defineresource pop

end
%%EndResource
)PS";

} // namespace Samples
