// Inner loops of factorization and substitution, once for every instruction set. The including file has set the target of
// the compiler and defined: Vec, kLanes, Load, Store, Broadcast, MulAdd, ProductMinus, Split, Join, Transpose, Prefetch and the
// tile sizes kDoubleVectors, kDoubleColumns, kQuadVectors, kQuadColumns. No library templates in here: their
// instances would be shared with code for older processors.

// --- double -------------------------------------------------------------------------------------------------------

void UpdateColumnsDouble(int depth, const double* left, const double* right, double* const* target)
{
    Vec sum[kDoubleColumns][kDoubleVectors] = {};
#pragma GCC unroll 8
    for (int s = 0; s < kDoubleColumns; ++s)
        // The targets are columns far apart in memory: asked for now, they arrive while the sums are formed.
        Prefetch(target[s], kDoubleVectors * kLanes);
    for (int k = 0; k < depth; ++k) {
        Vec x[kDoubleVectors];
#pragma GCC unroll 4
        for (int v = 0; v < kDoubleVectors; ++v)
            x[v] = Load(left + v * kLanes);
#pragma GCC unroll 8
        for (int s = 0; s < kDoubleColumns; ++s) {
            const Vec y = Broadcast(right + s);
#pragma GCC unroll 4
            for (int v = 0; v < kDoubleVectors; ++v)
                sum[s][v] = MulAdd(x[v], y, sum[s][v]);
        }
        left += kDoubleVectors * kLanes;
        right += kDoubleColumns;
    }
#pragma GCC unroll 8
    for (int s = 0; s < kDoubleColumns; ++s)
#pragma GCC unroll 4
        for (int v = 0; v < kDoubleVectors; ++v)
            // All of the panel's products are summed first and taken off once: one rounding at the size of the target,
            // however many.
            Store(target[s] + v * kLanes, Load(target[s] + v * kLanes) - sum[s][v]);
}

void UpdateRowsDouble(int depth, const double* left, const double* right, double* target)
{
    double* rows[kDoubleColumns];
    for (int s = 0; s < kDoubleColumns; ++s)
        rows[s] = target + s * kDoubleVectors * kLanes;
    UpdateColumnsDouble(depth, left, right, rows);
}

void SolveTriangleDouble(double* x, const double* u)
{
    constexpr int kRow = kDoubleVectors * kLanes;
    for (int v = 0; v < kDoubleVectors; ++v)
        for (int s = 1; s < kTriangleRows; ++s) {
            Vec sum = {};
            for (int k = 0; k < s; ++k)
                sum = MulAdd(Load(x + k * kRow + v * kLanes), Broadcast(u + k * kTriangleRows + s), sum);
            double* row = x + s * kRow + v * kLanes;
            Store(row, Load(row) - sum);
        }
}

// q = x (1 / d), then once more with the remainder: right to the last bit or nearly, without a division per term.
void DivideRowsDouble(int depth, const double* x, const double* pivot, double* quotient)
{
    constexpr int kRow = kDoubleVectors * kLanes;
    for (int k = 0; k < depth; ++k) {
        const double reciprocalOfPivot = 1 / pivot[k];
        const Vec d = Broadcast(pivot + k), reciprocal = Broadcast(&reciprocalOfPivot);
        for (int v = 0; v < kDoubleVectors; ++v) {
            const Vec g = Load(x + k * kRow + v * kLanes);
            const Vec q = g * reciprocal;
            Store(quotient + k * kRow + v * kLanes, MulAdd(MulAdd(-q, d, g), reciprocal, q));
        }
    }
}

void CopyToRightDouble(int depth, const double* left, int firstOfLeft, double* right)
{
    for (int k = 0; k < depth; ++k)
        for (int s = 0; s < kDoubleColumns; ++s)
            right[k * kDoubleColumns + s] = left[k * kDoubleVectors * kLanes + firstOfLeft + s];
}

void PackSquareDouble(const double* const* column, double* rows, int firstInRow)
{
    Vec square[kLanes];
#pragma GCC unroll 8
    for (int t = 0; t < kLanes; ++t)
        square[t] = Load(column[t]);
    Transpose(square);
#pragma GCC unroll 8
    for (int k = 0; k < kLanes; ++k)
        Store(rows + k * kDoubleVectors * kLanes + firstInRow, square[kLanes - 1 - k]);
}

void UnpackSquareDouble(const double* rows, int firstInRow, double* const* column)
{
    Vec square[kLanes];
#pragma GCC unroll 8
    for (int k = 0; k < kLanes; ++k)
        square[kLanes - 1 - k] = Load(rows + k * kDoubleVectors * kLanes + firstInRow);
    Transpose(square);
#pragma GCC unroll 8
    for (int t = 0; t < kLanes; ++t)
        Store(column[t], square[t]);
}

// --- double128 ----------------------------------------------------------------------------------------------------

/// A sum of products as the rounded sum of their high products, and beside it the sum of all that was rounded off.
/// The second is small, so that its own rounding is of the order of the last bit of a double128.
/// Source: Ogita, Rump & Oishi, Accurate sum and dot product, SIAM J. Sci. Comput. 26 (2005), algorithm 5.3.
struct QuadSum
{
    Vec high = {};
    Vec low = {};
};

struct QuadVec
{
    Vec high;
    Vec low;
};

/// Knuth's two-sum of high and p = x.high y.high leaves (high - (t - z)) + (p - z). The second bracket and the
/// rounding error of p itself are x.high y.high - z together: one fused multiply-add for both.
inline void AddProduct(QuadSum& sum, const QuadVec& x, const QuadVec& y)
{
    const Vec p = x.high * y.high;
    const Vec t = sum.high + p;
    const Vec z = t - sum.high;
    const Vec e = MulAdd(x.low, y.high, MulAdd(x.high, y.low, ProductMinus(x.high, y.high, p, z)));
    sum.low += e + (sum.high - (t - z));
    sum.high = t;
}

inline QuadVec Difference(const QuadVec& a, const QuadSum& b)
{
    // Two-sums of the high and of the low parts, then the errors are gathered from the small ones up and the result is
    // made a proper pair again, its low part within half a unit of its high one.
    const Vec s = a.high - b.high;
    const Vec v = s - a.high;
    const Vec e = (a.high - (s - v)) - (b.high + v);
    const Vec t = a.low - b.low;
    const Vec w = t - a.low;
    const Vec f = (a.low - (t - w)) - (b.low + w);
    const Vec e1 = e + t;
    const Vec s1 = s + e1;
    const Vec v1 = s1 - s;
    const Vec e2 = ((s - (s1 - v1)) + (e1 - v1)) + f;
    const Vec s2 = s1 + e2;
    return {s2, e2 - (s2 - s1)};
}

inline QuadVec LoadPacked(const double* row, int v)
{
    return {Load(row + v * kLanes), Load(row + (kQuadVectors + v) * kLanes)};
}

inline void StorePacked(double* row, int v, const QuadVec& x)
{
    Store(row + v * kLanes, x.high);
    Store(row + (kQuadVectors + v) * kLanes, x.low);
}

inline void SumProducts(int depth, const double* left, const double* right, QuadSum (&sum)[kQuadColumns][kQuadVectors])
{
    for (int k = 0; k < depth; ++k) {
        QuadVec x[kQuadVectors];
#pragma GCC unroll 4
        for (int v = 0; v < kQuadVectors; ++v)
            x[v] = LoadPacked(left, v);
#pragma GCC unroll 8
        for (int s = 0; s < kQuadColumns; ++s) {
            const QuadVec y = {Broadcast(right + s), Broadcast(right + kQuadColumns + s)};
#pragma GCC unroll 4
            for (int v = 0; v < kQuadVectors; ++v)
                AddProduct(sum[s][v], x[v], y);
        }
        left += 2 * kQuadVectors * kLanes;
        right += 2 * kQuadColumns;
    }
}

void UpdateColumnsQuad(int depth, const double* left, const double* right, double128* const* target)
{
    QuadSum sum[kQuadColumns][kQuadVectors];
    SumProducts(depth, left, right, sum);
#pragma GCC unroll 8
    for (int s = 0; s < kQuadColumns; ++s) {
        double* column = reinterpret_cast<double*>(target[s]);
#pragma GCC unroll 4
        for (int v = 0; v < kQuadVectors; ++v) {
            double* at = column + 2 * v * kLanes;
            QuadVec old;
            Split(Load(at), Load(at + kLanes), old.high, old.low);
            const QuadVec next = Difference(old, sum[s][v]);
            Vec first, second;
            Join(next.high, next.low, first, second);
            Store(at, first);
            Store(at + kLanes, second);
        }
    }
}

void UpdateRowsQuad(int depth, const double* left, const double* right, double* target)
{
    QuadSum sum[kQuadColumns][kQuadVectors];
    SumProducts(depth, left, right, sum);
#pragma GCC unroll 8
    for (int s = 0; s < kQuadColumns; ++s) {
        double* row = target + s * 2 * kQuadVectors * kLanes;
#pragma GCC unroll 4
        for (int v = 0; v < kQuadVectors; ++v)
            StorePacked(row, v, Difference(LoadPacked(row, v), sum[s][v]));
    }
}

void SolveTriangleQuad(double* x, const double* u)
{
    constexpr int kRow = 2 * kQuadVectors * kLanes;
    for (int v = 0; v < kQuadVectors; ++v)
        for (int s = 1; s < kTriangleRows; ++s) {
            QuadSum sum;
            for (int k = 0; k < s; ++k) {
                const double* uRow = u + k * 2 * kTriangleRows;
                AddProduct(sum, LoadPacked(x + k * kRow, v),
                           {Broadcast(uRow + s), Broadcast(uRow + kTriangleRows + s)});
            }
            double* row = x + s * kRow;
            StorePacked(row, v, Difference(LoadPacked(row, v), sum));
        }
}

void DivideRowsQuad(int depth, const double* x, const double128* pivot, double* quotient)
{
    constexpr int kRow = 2 * kQuadVectors * kLanes;
    for (int k = 0; k < depth; ++k) {
        // q = g / d to the first 53 bits by the reciprocal of the high part, then the remainder g - q d, exact in its
        // leading part by the error of the product, gives the bits below.
        const double parts[] = {pivot[k].Hi(), pivot[k].Lo(), 1 / pivot[k].Hi()};
        const Vec high = Broadcast(parts), low = Broadcast(parts + 1), reciprocal = Broadcast(parts + 2);
        for (int v = 0; v < kQuadVectors; ++v) {
            const QuadVec g = LoadPacked(x + k * kRow, v);
            const Vec q = g.high * reciprocal;
            const Vec p = q * high;
            const Vec remainder = ((g.high - p) - ProductMinus(q, high, p, p)) + (g.low - q * low);
            const Vec correction = remainder * reciprocal;
            const Vec sum = q + correction;
            StorePacked(quotient + k * kRow, v, {sum, correction - (sum - q)});
        }
    }
}

void CopyToRightQuad(int depth, const double* left, int firstOfLeft, double* right)
{
    for (int k = 0; k < 2 * depth; ++k)
        for (int s = 0; s < kQuadColumns; ++s)
            right[k * kQuadColumns + s] = left[k * kQuadVectors * kLanes + firstOfLeft + s];
}

void PackSquareQuad(const double128* const* column, double* rows, int firstInRow)
{
    Vec high[kLanes], low[kLanes];
#pragma GCC unroll 8
    for (int t = 0; t < kLanes; ++t) {
        const double* at = reinterpret_cast<const double*>(column[t]);
        Split(Load(at), Load(at + kLanes), high[t], low[t]);
    }
    Transpose(high);
    Transpose(low);
#pragma GCC unroll 8
    for (int k = 0; k < kLanes; ++k) {
        double* row = rows + k * 2 * kQuadVectors * kLanes + firstInRow;
        Store(row, high[kLanes - 1 - k]);
        Store(row + kQuadVectors * kLanes, low[kLanes - 1 - k]);
    }
}

void UnpackSquareQuad(const double* rows, int firstInRow, double128* const* column)
{
    Vec high[kLanes], low[kLanes];
#pragma GCC unroll 8
    for (int k = 0; k < kLanes; ++k) {
        const double* row = rows + k * 2 * kQuadVectors * kLanes + firstInRow;
        high[kLanes - 1 - k] = Load(row);
        low[kLanes - 1 - k] = Load(row + kQuadVectors * kLanes);
    }
    Transpose(high);
    Transpose(low);
#pragma GCC unroll 8
    for (int t = 0; t < kLanes; ++t) {
        double* at = reinterpret_cast<double*>(column[t]);
        Vec first, second;
        Join(high[t], low[t], first, second);
        Store(at, first);
        Store(at + kLanes, second);
    }
}

// --- substitution -------------------------------------------------------------------------------------------------

constexpr int kDoubleSums = 16, kQuadSums = 8;  // partial sums of a dot product: whole vectors on every instruction set

/// Products u v of 16 terms, each formed in double128 and rounded, added to 16 sums.
inline void AddRoundedProducts(const double* u, const double* vHigh, const double* vLow, Vec* sum)
{
#pragma GCC unroll 8
    for (int v = 0; v < kDoubleSums / kLanes; ++v) {
        const Vec a = Load(u + v * kLanes), high = Load(vHigh + v * kLanes);
        const Vec p = a * high;
        sum[v] += p + MulAdd(a, Load(vLow + v * kLanes), ProductMinus(a, high, p, p));
    }
}

double128 DotProductDouble(int count, const double* u, const double* vHigh, const double* vLow)
{
    Vec sum[kDoubleSums / kLanes] = {};
    int i = 0;
    for (; i + kDoubleSums <= count; i += kDoubleSums)
        AddRoundedProducts(u + i, vHigh + i, vLow + i, sum);
    // The end of the column is filled up with zeros to whole vectors: it goes through the same sums, whatever their
    // length.
    double rest[3][kDoubleSums] = {};
    for (int r = 0; i < count; ++i, ++r) {
        rest[0][r] = u[i];
        rest[1][r] = vHigh[i];
        rest[2][r] = vLow[i];
    }
    AddRoundedProducts(rest[0], rest[1], rest[2], sum);
    double total = 0;
    // Partial sums are added up in one order on every instruction set, by their place and not by their vector.
    for (const Vec& part : sum)
        for (int lane = 0; lane < kLanes; ++lane)
            total += part[lane];
    return total;
}

inline QuadVec LoadQuad(const double* at)
{
    QuadVec x;
    Split(Load(at), Load(at + kLanes), x.high, x.low);
    return x;
}

inline void AddQuadProducts(const double* u, const double* vHigh, const double* vLow, QuadSum* sum)
{
#pragma GCC unroll 8
    for (int v = 0; v < kQuadSums / kLanes; ++v)
        AddProduct(sum[v], LoadQuad(u + 2 * v * kLanes), {Load(vHigh + v * kLanes), Load(vLow + v * kLanes)});
}

double128 DotProductQuad(int count, const double128* u, const double* vHigh, const double* vLow)
{
    const double* at = reinterpret_cast<const double*>(u);
    QuadSum sum[kQuadSums / kLanes];
    int i = 0;
    for (; i + kQuadSums <= count; i += kQuadSums)
        AddQuadProducts(at + 2 * i, vHigh + i, vLow + i, sum);
    double uRest[2 * kQuadSums] = {}, rest[2][kQuadSums] = {};
    for (int r = 0; i < count; ++i, ++r) {
        uRest[2 * r] = at[2 * i];
        uRest[2 * r + 1] = at[2 * i + 1];
        rest[0][r] = vHigh[i];
        rest[1][r] = vLow[i];
    }
    AddQuadProducts(uRest, rest[0], rest[1], sum);
    double128 high = 0;
    double low = 0;
    for (const QuadSum& part : sum)
        for (int lane = 0; lane < kLanes; ++lane) {
            high += double128(part.high[lane]);
            low += part.low[lane];
        }
    return high += double128(low);
}

inline void SubtractProduct(const QuadVec& u, const QuadVec& t, double* vHigh, double* vLow)
{
    QuadSum product;
    product.high = u.high * t.high;
    const Vec error = ProductMinus(u.high, t.high, product.high, product.high);
    product.low = MulAdd(u.low, t.high, MulAdd(u.high, t.low, error));
    const QuadVec next = Difference({Load(vHigh), Load(vLow)}, product);
    Store(vHigh, next.high);
    Store(vLow, next.low);
}

void SubtractMultipleDouble(int count, const double* u, const double128& t, double* vHigh, double* vLow)
{
    const double parts[] = {t.Hi(), t.Lo()};
    const QuadVec factor = {Broadcast(parts), Broadcast(parts + 1)};
    int i = 0;
    for (; i + kLanes <= count; i += kLanes)
        SubtractProduct({Load(u + i), Vec{}}, factor, vHigh + i, vLow + i);
    double rest[3][kLanes] = {};
    for (int r = 0; i + r < count; ++r) {
        rest[0][r] = u[i + r];
        rest[1][r] = vHigh[i + r];
        rest[2][r] = vLow[i + r];
    }
    SubtractProduct({Load(rest[0]), Vec{}}, factor, rest[1], rest[2]);
    for (int r = 0; i + r < count; ++r) {
        vHigh[i + r] = rest[1][r];
        vLow[i + r] = rest[2][r];
    }
}

void SubtractMultipleQuad(int count, const double128* u, const double128& t, double* vHigh, double* vLow)
{
    const double parts[] = {t.Hi(), t.Lo()};
    const QuadVec factor = {Broadcast(parts), Broadcast(parts + 1)};
    int i = 0;
    for (; i + kLanes <= count; i += kLanes)
        SubtractProduct(LoadQuad(reinterpret_cast<const double*>(u + i)), factor, vHigh + i, vLow + i);
    double uRest[2 * kLanes] = {}, rest[2][kLanes] = {};
    for (int r = 0; i + r < count; ++r) {
        uRest[2 * r] = u[i + r].Hi();
        uRest[2 * r + 1] = u[i + r].Lo();
        rest[0][r] = vHigh[i + r];
        rest[1][r] = vLow[i + r];
    }
    SubtractProduct(LoadQuad(uRest), factor, rest[0], rest[1]);
    for (int r = 0; i + r < count; ++r) {
        vHigh[i + r] = rest[0][r];
        vLow[i + r] = rest[1][r];
    }
}

// --- table --------------------------------------------------------------------------------------------------------

constexpr TileKernels<double> kDoubleTiles{.name = kInstructionSet,
                                           .rows = kDoubleVectors * kLanes,
                                           .columns = kDoubleColumns,
                                           .lanes = kLanes,
                                           .updateColumns = UpdateColumnsDouble,
                                           .updateRows = UpdateRowsDouble,
                                           .solveTriangle = SolveTriangleDouble,
                                           .divideRows = DivideRowsDouble,
                                           .copyToRight = CopyToRightDouble,
                                           .packSquare = PackSquareDouble,
                                           .unpackSquare = UnpackSquareDouble,
                                           .dotProduct = DotProductDouble,
                                           .subtractMultiple = SubtractMultipleDouble};

constexpr TileKernels<double128> kQuadTiles{.name = kInstructionSet,
                                            .rows = kQuadVectors * kLanes,
                                            .columns = kQuadColumns,
                                            .lanes = kLanes,
                                            .updateColumns = UpdateColumnsQuad,
                                            .updateRows = UpdateRowsQuad,
                                            .solveTriangle = SolveTriangleQuad,
                                            .divideRows = DivideRowsQuad,
                                            .copyToRight = CopyToRightQuad,
                                            .packSquare = PackSquareQuad,
                                            .unpackSquare = UnpackSquareQuad,
                                            .dotProduct = DotProductQuad,
                                            .subtractMultiple = SubtractMultipleQuad};
