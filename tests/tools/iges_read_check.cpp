// Reads an IGES file back with OpenCASCADE's IGES reader, as a CAD system would, and checks
// what the propeller export promises: the file loads without a failure, every root entity is
// transferred without a failure, the faces built are the expected number, the shape is valid,
// and no point lies farther from the shaft axis (X) than the propeller radius.
//
// Usage: iges_read_check FILE.igs --faces N --radius R --unit MM|M|FT|INCH
// Exit status 0 when all checks pass, 1 otherwise, 2 on a usage error.
#include <BRepBndLib.hxx>
#include <BRepCheck_Analyzer.hxx>
#include <BRepGProp.hxx>
#include <Bnd_Box.hxx>
#include <GProp_GProps.hxx>
#include <IFSelect_ReturnStatus.hxx>
#include <IGESControl_Reader.hxx>
#include <Interface_CheckIterator.hxx>
#include <Interface_InterfaceModel.hxx>
#include <Interface_Static.hxx>
#include <TopAbs_ShapeEnum.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS_Shape.hxx>
#include <Transfer_TransientProcess.hxx>
#include <XSControl_TransferReader.hxx>
#include <XSControl_WorkSession.hxx>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

static int Count(const TopoDS_Shape& s, TopAbs_ShapeEnum what) {
  int n = 0;
  for (TopExp_Explorer ex(s, what); ex.More(); ex.Next()) ++n;
  return n;
}

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: %s FILE.igs --faces N --radius R --unit MM|M|FT|INCH\n", argv[0]);
    return 2;
  }
  int faces = -1;
  double radius = -1.0;
  std::string unit = "M";
  for (int i = 2; i + 1 < argc; i += 2) {
    const std::string opt = argv[i];
    if (opt == "--faces")
      faces = std::atoi(argv[i + 1]);
    else if (opt == "--radius")
      radius = std::atof(argv[i + 1]);
    else if (opt == "--unit")
      unit = argv[i + 1];
  }
  IGESControl_Reader reader;
  Interface_Static::SetCVal("xstep.cascade.unit", unit.c_str());  // coordinates as written
  if (reader.ReadFile(argv[1]) != IFSelect_RetDone) {
    std::printf("LOAD FAILED\n");
    return 1;
  }
  bool ok = true;
  if (!reader.WS()->ModelCheckList().IsEmpty(Standard_True)) {
    std::printf("FAIL: the file has syntax failures\n");
    ok = false;
  }
  const int roots = reader.NbRootsForTransfer();
  const int transferred = reader.TransferRoots();
  std::printf("IGES entities %d, roots %d, transferred %d\n", reader.Model()->NbEntities(), roots,
              transferred);
  reader.PrintCheckTransfer(Standard_True, IFSelect_ItemsByEntity);  // failures only
  if (!reader.WS()->TransferReader()->TransientProcess()->CheckList(Standard_False).IsEmpty(Standard_True)) {
    std::printf("FAIL: transfer failures\n");
    ok = false;
  }
  const TopoDS_Shape shape = reader.OneShape();
  const int nf = shape.IsNull() ? 0 : Count(shape, TopAbs_FACE);
  std::printf("faces %d (expected %d)\n", nf, faces);
  if (nf == 0 || (faces >= 0 && nf != faces)) return 1;
  const bool valid = BRepCheck_Analyzer(shape).IsValid();
  GProp_GProps props;
  BRepGProp::SurfaceProperties(shape, props);
  std::printf("valid %s, total area %.9g\n", valid ? "yes" : "NO", props.Mass());
  ok = ok && valid;
  Bnd_Box box;
  BRepBndLib::AddOptimal(shape, box, Standard_False, Standard_False);
  double x0, y0, z0, x1, y1, z1;
  box.Get(x0, y0, z0, x1, y1, z1);
  const double reach = std::max({std::fabs(y0), std::fabs(y1), std::fabs(z0), std::fabs(z1)});
  std::printf("bounding box %.6g %.6g %.6g  %.6g %.6g %.6g; farthest from the axis %.6g (radius %.6g)\n", x0,
              y0, z0, x1, y1, z1, reach, radius);
  if (radius > 0.0 && reach > radius * 1.001) {
    std::printf("FAIL: the shape reaches beyond the propeller radius\n");
    ok = false;
  }
  return ok ? 0 : 1;
}
