// The registration table: every built-in class, in the order initClasses
// registers them. New classes are added here, in their place, as they land.
#include "nerio3d/actions/nrAction.h"
#include "nerio3d/actions/nrDrawAction.h"
#include "nerio3d/actions/nrHit.h"
#include "nerio3d/actions/nrIsectAction.h"
#include "nerio3d/actions/nrSoundAction.h"
#include "nerio3d/arrays/nrData.h"
#include "nerio3d/audio/nrAudio.h"
#include "nerio3d/audio/nrAudioClip.h"
#include "nerio3d/audio/nrAudioSamples.h"
#include "nerio3d/audio/nrMicrophone.h"
#include "nerio3d/audio/nrSound.h"
#include "nerio3d/audio/nrSoundPlayer.h"
#include "nerio3d/core/nrObject.h"
#include "nerio3d/events/nrColorInterpolator.h"
#include "nerio3d/events/nrCoordinateInterpolator.h"
#include "nerio3d/events/nrEngine.h"
#include "nerio3d/events/nrInterpolator.h"
#include "nerio3d/events/nrMorphEng.h"
#include "nerio3d/events/nrMorphEng3f.h"
#include "nerio3d/events/nrMorphEng4f.h"
#include "nerio3d/events/nrNormalInterpolator.h"
#include "nerio3d/events/nrOrientationInterpolator.h"
#include "nerio3d/events/nrPositionInterpolator.h"
#include "nerio3d/events/nrScalarInterpolator.h"
#include "nerio3d/events/nrSelectorEng.h"
#include "nerio3d/events/nrSelectorEng3f.h"
#include "nerio3d/events/nrSelectorEng4f.h"
#include "nerio3d/events/nrPickSensor.h"
#include "nerio3d/events/nrPlaneSensor.h"
#include "nerio3d/events/nrSphereSensor.h"
#include "nerio3d/events/nrSpline.h"
#include "nerio3d/events/nrTimeSensor.h"
#include "nerio3d/events/nrTouchSensor.h"
#include "nerio3d/events/nrTransformEng.h"
#include "nerio3d/events/nrTransformEng3f.h"
#include "nerio3d/fields/nrContainer.h"
#include "nerio3d/fields/nrMFRef.h"
#include "nerio3d/fields/nrMField.h"
#include "nerio3d/fields/nrSFRef.h"
#include "nerio3d/fields/nrSField.h"
#include "nerio3d/geometry/nrBox.h"
#include "nerio3d/geometry/nrColorSet.h"
#include "nerio3d/geometry/nrColorSet3f.h"
#include "nerio3d/geometry/nrColorSet4f.h"
#include "nerio3d/geometry/nrCone.h"
#include "nerio3d/geometry/nrCoordSet.h"
#include "nerio3d/geometry/nrCoordSet3f.h"
#include "nerio3d/geometry/nrCylinder.h"
#include "nerio3d/geometry/nrGeoSet.h"
#include "nerio3d/geometry/nrGeometry.h"
#include "nerio3d/geometry/nrIndexSet.h"
#include "nerio3d/geometry/nrIndexedFaceSet.h"
#include "nerio3d/geometry/nrIndexedLineSet.h"
#include "nerio3d/geometry/nrLineSet.h"
#include "nerio3d/geometry/nrLineStripSet.h"
#include "nerio3d/geometry/nrNormalSet.h"
#include "nerio3d/geometry/nrNormalSet3f.h"
#include "nerio3d/geometry/nrNormalSet3s.h"
#include "nerio3d/geometry/nrPointSet.h"
#include "nerio3d/geometry/nrPolySet.h"
#include "nerio3d/geometry/nrQuadSet.h"
#include "nerio3d/geometry/nrShape.h"
#include "nerio3d/geometry/nrSphere.h"
#include "nerio3d/geometry/nrTexCoordSet.h"
#include "nerio3d/geometry/nrTexCoordSet2f.h"
#include "nerio3d/geometry/nrTriFanSet.h"
#include "nerio3d/geometry/nrTriSet.h"
#include "nerio3d/geometry/nrTriStripSet.h"
#include "nerio3d/nodes/nrBillboard.h"
#include "nerio3d/nodes/nrCollision.h"
#include "nerio3d/nodes/nrGroup.h"
#include "nerio3d/nodes/nrInline.h"
#include "nerio3d/nodes/nrNode.h"
#include "nerio3d/nodes/nrSwitch.h"
#include "nerio3d/nodes/nrTransform.h"
#include "nerio3d/render/nrAppearance.h"
#include "nerio3d/render/nrCamera.h"
#include "nerio3d/render/nrContext.h"
#include "nerio3d/render/nrDirectionalLight.h"
#include "nerio3d/render/nrEnvironment.h"
#include "nerio3d/render/nrImage.h"
#include "nerio3d/render/nrImageTexture.h"
#include "nerio3d/render/nrLight.h"
#include "nerio3d/render/nrMaterial.h"
#include "nerio3d/render/nrOrthoCamera.h"
#include "nerio3d/render/nrPerspCamera.h"
#include "nerio3d/render/nrPointLight.h"
#include "nerio3d/render/nrSpotLight.h"
#include "nerio3d/render/nrTexGen.h"
#include "nerio3d/render/nrTexture.h"

namespace {
template <typename Class>
void registerClass() {
  if (!Class::classType) Class::getClassType();
}
}  // namespace

void nrObject::initClasses() {
  static bool done = false;
  if (done) return;
  done = true;
  getClassType();
  registerClass<nrData>();
  registerClass<nrContainer>();
  registerClass<nrSoundPlayer>();
  registerClass<nrContext>();
  registerClass<nrField>();
  registerClass<nrSFUByte>();
  registerClass<nrSFShort>();
  registerClass<nrSFInt>();
  registerClass<nrSFUInt>();
  registerClass<nrSFFloat>();
  registerClass<nrSFDouble>();
  registerClass<nrSFEnum>();
  registerClass<nrSFRef>();
  registerClass<nrSFVec2f>();
  registerClass<nrSFVec3f>();
  registerClass<nrSFVec3s>();
  registerClass<nrSFVec4f>();
  registerClass<nrSFVec4ub>();
  registerClass<nrSFBitMask>();
  registerClass<nrSFName>();
  registerClass<nrSFMatrix4f>();
  registerClass<nrSFRotation>();
  registerClass<nrSFSphereBound>();
  registerClass<nrSFBoxBound>();
  registerClass<nrSFString>();
  registerClass<nrSFTime>();
  registerClass<nrMField>();
  registerClass<nrMFByte>();
  registerClass<nrMFInt>();
  registerClass<nrMFFloat>();
  registerClass<nrMFMatrix4f>();
  registerClass<nrMFRotation>();
  registerClass<nrMFVec2f>();
  registerClass<nrMFVec3f>();
  registerClass<nrMFVec3s>();
  registerClass<nrMFVec4f>();
  registerClass<nrMFRef>();
  registerClass<nrMFString>();
  registerClass<nrIndexSet>();
  registerClass<nrCoordSet>();
  registerClass<nrNormalSet>();
  registerClass<nrColorSet>();
  registerClass<nrTexCoordSet>();
  registerClass<nrCoordSet3f>();
  registerClass<nrNormalSet3f>();
  registerClass<nrNormalSet3s>();
  registerClass<nrColorSet3f>();
  registerClass<nrColorSet4f>();
  registerClass<nrTexCoordSet2f>();
  registerClass<nrGeometry>();
  registerClass<nrGeoSet>();
  registerClass<nrPointSet>();
  registerClass<nrLineSet>();
  registerClass<nrLineStripSet>();
  registerClass<nrIndexedLineSet>();
  registerClass<nrTriSet>();
  registerClass<nrTriStripSet>();
  registerClass<nrTriFanSet>();
  registerClass<nrQuadSet>();
  registerClass<nrPolySet>();
  registerClass<nrIndexedFaceSet>();
  registerClass<nrImage>();
  registerClass<nrTexture>();
  registerClass<nrImageTexture>();
  registerClass<nrTexGen>();
  registerClass<nrMaterial>();
  registerClass<nrAppearance>();
  registerClass<nrAudioClip>();
  registerClass<nrCamera>();
  registerClass<nrOrthoCamera>();
  registerClass<nrPerspCamera>();
  registerClass<nrMicrophone>();
  registerClass<nrAction>();
  registerClass<nrDrawAction>();
  registerClass<nrIsectAction>();
  registerClass<nrSoundAction>();
  registerClass<nrHit>();
  registerClass<nrNode>();
  registerClass<nrLight>();
  registerClass<nrDirectionalLight>();
  registerClass<nrPointLight>();
  registerClass<nrSpotLight>();
  registerClass<nrShape>();
  registerClass<nrSound>();
  registerClass<nrGroup>();
  registerClass<nrSwitch>();
  registerClass<nrCollision>();
  registerClass<nrInline>();
  registerClass<nrTransform>();
  registerClass<nrEnvironment>();
  registerClass<nrBillboard>();
  registerClass<nrEngine>();
  registerClass<nrMorphEng>();
  registerClass<nrMorphEng4f>();
  registerClass<nrMorphEng3f>();
  registerClass<nrTransformEng>();
  registerClass<nrTransformEng3f>();
  registerClass<nrSelectorEng>();
  registerClass<nrSelectorEng4f>();
  registerClass<nrSelectorEng3f>();
  registerClass<nrSpline>();
  registerClass<nrTimeSensor>();
  registerClass<nrPickSensor>();
  registerClass<nrTouchSensor>();
  registerClass<nrSphereSensor>();
  registerClass<nrPlaneSensor>();
  registerClass<nrInterpolator>();
  registerClass<nrColorInterpolator>();
  registerClass<nrScalarInterpolator>();
  registerClass<nrPositionInterpolator>();
  registerClass<nrCoordinateInterpolator>();
  registerClass<nrOrientationInterpolator>();
  registerClass<nrNormalInterpolator>();
  registerClass<nrBox>();
  registerClass<nrSphere>();
  registerClass<nrCone>();
  registerClass<nrCylinder>();
  registerClass<nrAudio>();
  registerClass<nrAudioSamples>();
}
