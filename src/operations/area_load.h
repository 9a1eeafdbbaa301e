#pragma once

#include <initializer_list>
#include <map>
#include <utility>
#include <vector>

#include "model/jx_struct.h"
#include "platform/export.h"
#include "tools/jx_point.h"

/// An area that members enclose, within the footprint of an area load: members[i] arrives at nodes[i] on the way round,
/// which keeps the area on its left. The smallest node id stands first.
struct qvxSubArea
{
    std::vector<int> nodes;
    std::vector<int> members;
};

/// One area load at a time on its way to line loads of the members that carry it: finds the members in the footprint,
/// walks round the areas that they enclose, and hands the load of each to its members. Lives on the stack of one
/// conversion; the model outlives it.
class QVXFEM_API qvxAreaLoad
{
public:
    /// How a load is handed to the members around a sub-area; areas that are no rectangles go by Centroid, and those
    /// that are not convex by Circumference.
    enum Distribution : int {
        TwoWay = 0,      ///< triangles on the short sides, trapezoids on the long ones, at 45 degrees from the corners
        ShortSides = 1,  ///< half each to the two short sides
        LongSides = 2,   ///< half each to the two long sides
        SidesAlongAB = 3,   ///< half each to the sides parallel to AB of the footprint
        SidesAlongBC = 4,   ///< half each to the sides parallel to BC of the footprint
        Centroid = 5,       ///< to each side the triangle that it makes with the centroid
        Circumference = 6,  ///< one uniform load all round
    };

    /// @param unitFactor  line load in model units of a pressure times a length in model units
    explicit qvxAreaLoad(double unitFactor) : unitFactor_(unitFactor) {}
    virtual ~qvxAreaLoad();

    /// Finds the nodes and members within the footprint of a load, corners A, B, C, D in one plane: nodes as near to it
    /// as the merge tolerance, members with both ends among them.
    /// @throws jxException  when a corner is no node, A, B, C stand in line, the area is 0 or D is off the plane
    void SetAreaLoad(const CjxStruct* model, const jxAreaload& load);
    /// Finds the convex areas that the members enclose, each once, in the order of the members.
    void FindSubAreas(std::vector<qvxSubArea>& out);
    /// Appends the line loads of one sub-area, in global directions; nothing for a load of 0.
    /// @param loadedArea  raised by the area that they carry
    void ConvertSubArea(std::vector<jxLnLoad>& out, double& loadedArea, const qvxSubArea& subArea) const;

    double FootprintArea() const { return footprintArea_; }        ///< [length^2]
    bool HasOpenSubArea() const { return openSubArea_; }           ///< a member ends at a node of no other member
    bool HasDuplicateNode() const { return duplicateNode_; }       ///< a walk came to a node twice
    const jxPoint (&Corners() const)[4] { return corners_; }       ///< of the footprint, in its plane
    const std::vector<jxNd>& Nodes() const { return nodes_; }      ///< with coordinates in the plane
    const std::vector<jxBm>& Members() const { return members_; }  ///< with both ends among the nodes

private:
    // Which ways a member was walked already.
    struct Walked
    {
        bool forward = false;
        bool backward = false;
    };
    using WalkedMembers = std::map<int, Walked>;

    struct Step
    {
        const jxBm* member = nullptr;
        int node = 0;  // its far end
    };

    // The members around one sub-area with their places in the plane.
    struct Outline
    {
        std::vector<const jxBm*> members;
        std::vector<double> lengths;
        std::vector<jxPoint> points;
        double signedArea = 0;
    };

    void GatherWithin(const CjxStruct& model, double planeTolerance);
    void GatherNodeMembers();
    Step FindNextMember(const jxBm& current, int pivot) const;
    void TraceSubArea(std::vector<qvxSubArea>& out, WalkedMembers& walked, const jxBm& member, int startPivot,
                      int target);
    jxPoint PlaceOf(int node) const;
    double LengthOf(const jxBm& member) const;
    Outline OutlineOf(const qvxSubArea& subArea) const;

    // Line loads of each distribution rule (area_load_rules.cpp); value is the pressure along one global direction.
    struct Piece
    {
        double from = 0;  // fractions of the member's length
        double to = 1;
        double w1 = 0;
        double w2 = 0;
    };
    jxPoint Direction() const;
    void AddPieces(std::vector<jxLnLoad>& out, const jxBm& member, std::initializer_list<Piece> perPressure) const;
    void AddTriangularLoad(std::vector<jxLnLoad>& out, const jxBm& member, double width) const;
    void AddTrapezoidalLoad(std::vector<jxLnLoad>& out, const jxBm& member, double length, double width) const;
    void AddUniformLoad(std::vector<jxLnLoad>& out, const jxBm& member, double width) const;
    bool AddParallelSideLoads(std::vector<jxLnLoad>& out, const Outline& outline, const jxPoint& reference) const;
    void AddCentroidLoads(std::vector<jxLnLoad>& out, const Outline& outline) const;
    void AddCircumferenceLoads(std::vector<jxLnLoad>& out, const Outline& outline) const;
    void AddTwoWayLoads(std::vector<jxLnLoad>& out, const Outline& outline) const;
    void AddOppositeSides(std::vector<jxLnLoad>& out, const Outline& outline, std::size_t first, double width) const;
    void AddRectangleLoads(std::vector<jxLnLoad>& out, const Outline& outline) const;

    double unitFactor_;
    std::vector<jxNd> nodes_;
    std::vector<jxBm> members_;
    jxPoint corners_[4];
    double axes_[3][3] = {};
    std::map<int, std::vector<const jxBm*>> nodeMembers_;
    jxAreaload load_;
    bool openSubArea_ = false;
    bool duplicateNode_ = false;
    double footprintArea_ = 0;
};

namespace qvx {

/// What became of one area load: all that its lines and its picture tell. Places are in the plane of the footprint.
struct QVXFEM_API AreaLoadOutcome
{
    /// A sub-area and the line loads that carry its part of the load.
    struct SubArea
    {
        std::vector<jxPoint> points;
        double area = 0;  ///< [length^2]
        std::vector<jxLnLoad> loads;
    };
    using Ends = std::pair<jxPoint, jxPoint>;

    jxAreaload load;
    jxPoint corners[4];           ///< of the footprint [length]
    std::map<int, Ends> members;  ///< within the footprint, by id
    std::vector<SubArea> subAreas;
    double footprintArea = 0;    ///< [length^2]
    double loadedArea = 0;       ///< [length^2]
    bool openSubArea = false;    ///< a member ends at a node of no other member
    bool duplicateNode = false;  ///< a walk came to a node twice

    /// Whether the members carry the load of the whole footprint, within 0.1 % of its area.
    bool IsWhole() const;
    /// Resultant of the line loads, in global axes [force].
    jxPoint Resultant(const jxUnit& units) const;
};

/// What ConvertAreaLoads makes of the area loads of a load case, without doing it.
/// @param loadCase  index of a load case
/// @throws jxException  as ConvertAreaLoads
QVXFEM_API std::vector<AreaLoadOutcome> ConvertedAreaLoads(const CjxStruct& model, int loadCase);

}  // namespace qvx
