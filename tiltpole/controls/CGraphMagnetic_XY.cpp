#include "tiltpole/controls/CGraphMagnetic_XY.h"

namespace tiltpole {

CGraphMagnetic_XY::CGraphMagnetic_XY() : plot_(*this, detail::kPlotXY) {}

CGraphMagnetic_XY::~CGraphMagnetic_XY() = default;

int CGraphMagnetic_XY::Create(const wchar_t* /*ClassName*/, const wchar_t* /*WindowName*/,
                              std::uint32_t Style, const Rect& Place, ParentWindow Parent,
                              unsigned Id) {
  plot_.Create(Style, Place, Parent, Id);
  // Deliberate: hosts get 1 whatever became of the window.
  return 1;
}

void CGraphMagnetic_XY::AddTrackPoint(int x, int y, int z) {
  plot_.AddTrackPoint({x, y, z});
  AnnounceValue();
}

void CGraphMagnetic_XY::AddCenterPoint(int x, int y, int z) { plot_.AddCenterPoint({x, y, z}); }

void CGraphMagnetic_XY::Clear() {
  plot_.Clear();
  AnnounceValue();
}

void CGraphMagnetic_XY::ZoomAll() { plot_.ZoomAll(); }

int CGraphMagnetic_XY::GetDistance(const Point& a, const Point& b) const {
  return detail::DistanceOf(a, b);
}

void CGraphMagnetic_XY::DrawTrackPoints(DrawingContext* context) { plot_.DrawTrackPoints(context); }

void CGraphMagnetic_XY::DrawCenterPoints(DrawingContext* context) {
  plot_.DrawCenterPoints(context);
}

void CGraphMagnetic_XY::InvalidateCtrl() { plot_.InvalidateCtrl(); }

void CGraphMagnetic_XY::WorldToClient(int WorldX, int WorldV, int& ClientX, int& ClientY) const {
  plot_.WorldToClient(WorldX, WorldV, ClientX, ClientY);
}

void CGraphMagnetic_XY::ClientToWorld(int /*ClientX*/, int ClientY, int& WorldX,
                                      int& WorldV) const {
  plot_.ClientToWorld(ClientY, WorldX, WorldV);
}

int CGraphMagnetic_XY::ConfigSave() { return plot_.ConfigSave(); }

int CGraphMagnetic_XY::ConfigRead() { return plot_.ConfigRead(); }

void CGraphMagnetic_XY::OnPaint() { plot_.Paint(); }

Size CGraphMagnetic_XY::PreferredSize() const { return {205, 205}; }

std::wstring CGraphMagnetic_XY::AccessibleName() const { return L"Magnetometer readings, x and y"; }

std::wstring CGraphMagnetic_XY::AccessibleValue() const { return plot_.CountText(); }

}  // namespace tiltpole
