// Geometry steps of the scene-file reader: normals for face sets read
// without them, and bounds computed once for geometry that will not move.
#pragma once

class nrGeometry;
class nrIndexedFaceSet;

class vlGeom {
 public:
  // Gives every face corner a normal: the average of the normals of the faces
  // that meet at the corner's exact position at less than creaseAngle
  // (radians) from the first of them still ungrouped. Attaches a new normal
  // set, the normal index list and per-vertex normals.
  static void computeNorms(nrIndexedFaceSet* set, float creaseAngle);
  // Computes the geometry's box from its current contents and keeps it: the
  // bound mode becomes STATIC.
  static void calcStaticBound(nrGeometry* geometry);
};
