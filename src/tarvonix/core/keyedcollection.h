// SPDX-License-Identifier: MIT
#ifndef TARVONIX_KEYEDCOLLECTION_H
#define TARVONIX_KEYEDCOLLECTION_H

#include <tarvonix/core/error.h>

#include <QHashFunctions>
#include <QString>
#include <QStringList>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace tarvonix {

/*!
    The ordered, case-insensitive keyed collection behind Objetos, Referencias,
    Imagenes and the controls' collections of child controls.

    Entries keep their insertion order and are counted from 1. Keys compare
    without regard to letter case ("d12" finds "D12"); adding a key that is
    already present fails with Error::DuplicateKey and leaves the collection
    as it was.

    The contents are shared between the collection and the enumerators taken
    from it and copied only when the collection changes while an enumerator
    still reads them, so an enumerator always walks the contents it was taken
    from: a later add, remove or clear does not change what it yields.

    Lookups by key, add() and the removals take constant expected time (a
    removal, logarithmic once earlier removals have left gaps); a position
    is found in logarithmic time while there are gaps and at once otherwise.
    Only the key as given is kept: its case-folded form is worked out while
    hashing and comparing, never stored.
*/
template<typename T>
class KeyedCollection
{
    struct Entry
    {
        QString key;
        T value;
    };

    // Removed entries leave a gap in the slots until the gaps outnumber the
    // entries, so a removal never moves the entries after it. The slots live
    // in chunks: a big collection neither wastes half of a doubled array nor
    // copies all of it when it grows.
    static constexpr qsizetype ChunkShift = 10;
    static constexpr qsizetype ChunkSize = qsizetype(1) << ChunkShift;
    static constexpr quint32 FreeBucket = 0;
    static constexpr quint32 RemovedBucket = ~quint32(0);

    struct Data
    {
        std::vector<std::vector<Entry>> chunks;
        std::vector<quint64> gaps;  // one bit per slot, set where an entry was removed
        // Open addressing with linear probing. A bucket holds slot + 1 in the
        // bits of slotMask and high bits of the key's hash in the others, so
        // that a probe rarely reads an entry whose key does not match. There
        // are never more slots than one and a half buckets per table.
        std::vector<quint32> table;
        quint32 slotMask = 0;
        qsizetype tableUsed = 0; // buckets that are not free, removed ones included
        // Live slots counted in a Fenwick tree (1-based), so that a slot's
        // position and the slot at a position take log N while there are
        // gaps. Empty while there are none: then slot and position agree.
        std::vector<qint32> tree;
        qsizetype slotCount = 0;
        qsizetype live = 0;

        Entry &entry(qsizetype slot) { return chunks[size_t(slot >> ChunkShift)][size_t(slot & (ChunkSize - 1))]; }
        const Entry &entry(qsizetype slot) const
        {
            return chunks[size_t(slot >> ChunkShift)][size_t(slot & (ChunkSize - 1))];
        }
        qsizetype slotIn(size_t bucket) const { return qsizetype(table[bucket] & slotMask) - 1; }
        quint32 tagOf(size_t hash) const { return quint32(quint64(hash) >> 32) & ~slotMask; }
        bool isGap(qsizetype slot) const { return (gaps[size_t(slot >> 6)] >> (slot & 63)) & 1; }
        qsizetype nextLive(qsizetype slot) const
        {
            if (live != slotCount) {
                while (slot < slotCount && isGap(slot))
                    ++slot;
            }
            return slot;
        }
    };

public:
    class Enumerator;

    KeyedCollection()
        : d(std::make_shared<Data>())
    {
    }

    qsizetype count() const { return d->live; }
    bool isEmpty() const { return d->live == 0; }

    //! Appends \a value under \a key; fails with Error::DuplicateKey if the key is taken.
    void add(const QString &key, T value)
    {
        const size_t hash = hashOf(key);
        if (findBucket(key, hash) >= 0)
            throw Error(Error::DuplicateKey);
        detach();
        Data &data = *d;
        if (size_t(data.tableUsed + 1) * 4 > data.table.size() * 3)
            rebuildTable(data.live + 1);
        if (data.chunks.empty() || qsizetype(data.chunks.back().size()) == ChunkSize) {
            data.chunks.emplace_back();
            if (data.chunks.size() > 1)
                data.chunks.back().reserve(size_t(ChunkSize));
        }
        data.chunks.back().push_back(Entry{key, std::move(value)});
        const qsizetype slot = data.slotCount++;
        ++data.live;
        if ((slot & 63) == 0)
            data.gaps.push_back(0);
        if (!data.tree.empty())
            appendToTree(data);
        insertBucket(data, hash, slot);
    }

    bool contains(const QString &key) const { return findBucket(key, hashOf(key)) >= 0; }

    //! The 1-based position of \a key, or 0 when it is not present.
    qsizetype positionOf(const QString &key) const
    {
        const qsizetype bucket = findBucket(key, hashOf(key));
        return bucket < 0 ? 0 : positionOfSlot(d->slotIn(size_t(bucket)));
    }

    //! The value at the 1-based \a position; fails with Error::SubscriptOutOfRange outside 1..count().
    const T &at(qsizetype position) const
    {
        if (position < 1 || position > count())
            throw Error(Error::SubscriptOutOfRange);
        return d->entry(slotAt(position)).value;
    }

    //! The value under \a key; fails with Error::InvalidArgument when there is none.
    const T &at(const QString &key) const
    {
        const qsizetype bucket = findBucket(key, hashOf(key));
        if (bucket < 0)
            throw Error(Error::InvalidArgument);
        return d->entry(d->slotIn(size_t(bucket))).value;
    }

    //! The value under \a key, or a default-constructed T when there is none.
    T value(const QString &key) const
    {
        const qsizetype bucket = findBucket(key, hashOf(key));
        return bucket < 0 ? T() : d->entry(d->slotIn(size_t(bucket))).value;
    }

    //! The value at the 1-based \a position, or a default-constructed T outside 1..count().
    T value(qsizetype position) const
    {
        return position < 1 || position > count() ? T() : d->entry(slotAt(position)).value;
    }

    //! The key as it was given to add().
    QString keyAt(qsizetype position) const
    {
        if (position < 1 || position > count())
            throw Error(Error::SubscriptOutOfRange);
        return d->entry(slotAt(position)).key;
    }

    //! Removes the entry at the 1-based \a position; fails with Error::SubscriptOutOfRange.
    void removeAt(qsizetype position)
    {
        if (position < 1 || position > count())
            throw Error(Error::SubscriptOutOfRange);
        detach();
        const qsizetype slot = slotAt(position);
        removeSlot(bucketOfSlot(slot), slot);
    }

    //! Removes the entry under \a key; fails with Error::InvalidArgument when there is none.
    void remove(const QString &key)
    {
        if (!take(key))
            throw Error(Error::InvalidArgument);
    }

    //! Removes the entry under \a key and answers its value; answers nothing when there is none.
    std::optional<T> take(const QString &key)
    {
        const qsizetype bucket = findBucket(key, hashOf(key));
        if (bucket < 0)
            return std::nullopt;
        detach();
        const qsizetype slot = d->slotIn(size_t(bucket));
        std::optional<T> taken(std::move(d->entry(slot).value));
        removeSlot(bucket, slot);
        return taken;
    }

    /*!
        Removes, in one pass, every entry whose value \a predicate holds for,
        and answers how many went; the others keep their order. The predicate
        sees every entry once, in order, before anything is removed, so when
        it throws the collection is left as it was.
    */
    template<typename Predicate>
    qsizetype removeIf(Predicate predicate)
    {
        std::vector<bool> doomed(size_t(d->slotCount), false);
        qsizetype removed = 0;
        for (qsizetype slot = d->nextLive(0); slot < d->slotCount; slot = d->nextLive(slot + 1)) {
            if (predicate(std::as_const(d->entry(slot).value))) {
                doomed[size_t(slot)] = true;
                ++removed;
            }
        }
        if (removed == 0)
            return 0;
        detach();
        compact(&doomed, d->live - removed);
        return removed;
    }

    /*!
        Starts over with new, empty contents when there is at least one entry;
        an empty collection is left as it is. Enumerators taken before keep
        what they were taken from.
    */
    void clear()
    {
        if (d->live != 0)
            d = std::make_shared<Data>();
    }

    //! An enumerator over the present contents, in insertion order.
    Enumerator enumerate() const { return Enumerator(d); }

    //! Keys in insertion order, as they were given.
    QStringList keys() const
    {
        QStringList result;
        result.reserve(count());
        for (qsizetype slot = d->nextLive(0); slot < d->slotCount; slot = d->nextLive(slot + 1))
            result.append(d->entry(slot).key);
        return result;
    }

    /*!
        Forward iteration over the values, for range-for. The collection must
        not change during such a loop; take an enumerator to walk contents
        that the loop itself changes.
    */
    class const_iterator
    {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = T;
        using difference_type = std::ptrdiff_t;
        using pointer = const T *;
        using reference = const T &;

        const_iterator() = default;
        reference operator*() const { return m_data->entry(m_slot).value; }
        pointer operator->() const { return &m_data->entry(m_slot).value; }
        const_iterator &operator++()
        {
            m_slot = m_data->nextLive(m_slot + 1);
            return *this;
        }
        const_iterator operator++(int)
        {
            const_iterator old = *this;
            ++*this;
            return old;
        }
        bool operator==(const const_iterator &other) const = default;

    private:
        friend class KeyedCollection;
        const_iterator(const Data *data, qsizetype slot)
            : m_data(data)
            , m_slot(slot)
        {
        }
        const Data *m_data = nullptr;
        qsizetype m_slot = 0;
    };

    const_iterator begin() const { return const_iterator(d.get(), d->nextLive(0)); }
    const_iterator end() const { return const_iterator(d.get(), d->slotCount); }

    //! Walks the contents the collection had when it was taken, whatever happens to it later.
    class Enumerator
    {
    public:
        Enumerator() = default;

        qsizetype count() const { return m_data ? m_data->live : 0; }
        bool hasNext() const { return m_data && m_next < m_data->slotCount; }
        //! The next value; fails with Error::SubscriptOutOfRange past the end.
        const T &next()
        {
            if (!hasNext())
                throw Error(Error::SubscriptOutOfRange);
            const T &value = m_data->entry(m_next).value;
            m_next = m_data->nextLive(m_next + 1);
            return value;
        }
        void reset() { m_next = m_data ? m_data->nextLive(0) : 0; }

        const_iterator begin() const
        {
            return m_data ? const_iterator(m_data.get(), m_data->nextLive(0)) : const_iterator();
        }
        const_iterator end() const { return m_data ? const_iterator(m_data.get(), m_data->slotCount) : const_iterator(); }

    private:
        friend class KeyedCollection;
        explicit Enumerator(std::shared_ptr<const Data> data)
            : m_data(std::move(data))
        {
            reset();
        }
        // The contents never change under an enumerator (the collection copies
        // them first), so the next live slot can be found ahead of time.
        std::shared_ptr<const Data> m_data;
        qsizetype m_next = 0;
    };

private:
    // Reads a key one case-folded code point at a time. Folding a code point
    // never changes its length in UTF-16, so keys of different lengths never
    // match.
    class Folded
    {
    public:
        explicit Folded(const QString &key)
            : m_p(QStringView(key).utf16())
            , m_end(m_p + key.size())
        {
        }
        bool atEnd() const { return m_p == m_end; }
        char32_t next()
        {
            char32_t c = *m_p++;
            if (c < 0x80)
                return c - U'A' < 26 ? c + 32 : c;
            if (QChar::isHighSurrogate(c) && m_p != m_end && QChar::isLowSurrogate(*m_p))
                c = QChar::surrogateToUcs4(char16_t(c), char16_t(*m_p++));
            return QChar::toCaseFolded(c);
        }

    private:
        const char16_t *m_p;
        const char16_t *m_end;
    };

    static size_t hashOf(const QString &key)
    {
        size_t hash = QHashSeed::globalSeed();
        for (Folded folded(key); !folded.atEnd();)
            hash = (hash ^ folded.next()) * 0x100000001b3ULL;
        return size_t(qHash(quint64(hash))); // spreads the low bits the table uses
    }

    static bool sameKey(const QString &a, const QString &b)
    {
        if (a.size() != b.size())
            return false;
        if (a.isEmpty()
            || std::memcmp(a.constData(), b.constData(), size_t(a.size()) * sizeof(char16_t)) == 0)
            return true;
        for (Folded x(a), y(b); !x.atEnd();) {
            if (x.next() != y.next())
                return false;
        }
        return true;
    }

    qsizetype findBucket(const QString &key, size_t hash) const
    {
        const Data &data = *d;
        if (data.table.empty())
            return -1;
        const size_t mask = data.table.size() - 1;
        const quint32 tag = data.tagOf(hash);
        for (size_t bucket = hash & mask;; bucket = (bucket + 1) & mask) {
            const quint32 stored = data.table[bucket];
            if (stored == FreeBucket)
                return -1;
            if (stored != RemovedBucket && (stored & ~data.slotMask) == tag
                && sameKey(data.entry(data.slotIn(bucket)).key, key))
                return qsizetype(bucket);
        }
    }

    qsizetype bucketOfSlot(qsizetype slot) const
    {
        const Data &data = *d;
        const size_t mask = data.table.size() - 1;
        size_t bucket = hashOf(data.entry(slot).key) & mask;
        while (data.table[bucket] == RemovedBucket || data.slotIn(bucket) != slot)
            bucket = (bucket + 1) & mask;
        return qsizetype(bucket);
    }

    static void insertBucket(Data &data, size_t hash, qsizetype slot)
    {
        const size_t mask = data.table.size() - 1;
        size_t bucket = hash & mask;
        while (data.table[bucket] != FreeBucket && data.table[bucket] != RemovedBucket)
            bucket = (bucket + 1) & mask;
        if (data.table[bucket] == FreeBucket)
            ++data.tableUsed;
        data.table[bucket] = quint32(slot + 1) | data.tagOf(hash);
    }

    // Rehashes every live entry into a table that holds \a entries at a load of 3/4 at most.
    void rebuildTable(qsizetype entries)
    {
        Data &data = *d;
        size_t size = 8;
        while (size * 3 < size_t(entries) * 4)
            size *= 2;
        if (size < data.table.size() && size * 4 > data.table.size())
            size = data.table.size(); // only shrink when far too big
        data.table.assign(size, FreeBucket);
        data.tableUsed = 0;
        // Twice the buckets: the slots never reach one and a half times them.
        data.slotMask = size >= (size_t(1) << 31) ? ~quint32(0) >> 1 : quint32(size * 2 - 1);
        for (qsizetype slot = data.nextLive(0); slot < data.slotCount; slot = data.nextLive(slot + 1))
            insertBucket(data, hashOf(data.entry(slot).key), slot);
    }

    qsizetype positionOfSlot(qsizetype slot) const
    {
        const Data &data = *d;
        if (data.tree.empty())
            return slot + 1;
        qsizetype position = 0;
        for (qsizetype i = slot + 1; i > 0; i &= i - 1)
            position += data.tree[size_t(i)];
        return position;
    }

    // The slot of the entry at the 1-based \a position, which must be in range.
    qsizetype slotAt(qsizetype position) const
    {
        const Data &data = *d;
        if (data.tree.empty())
            return position - 1;
        qsizetype node = 0;
        qsizetype step = 1;
        while (step * 2 <= data.slotCount)
            step *= 2;
        for (; step > 0; step /= 2) {
            const qsizetype next = node + step;
            if (next <= data.slotCount && data.tree[size_t(next)] < position) {
                node = next;
                position -= data.tree[size_t(next)];
            }
        }
        return node; // the 1-based node after the last one short of position is the slot's
    }

    static void buildTree(Data &data)
    {
        data.tree.assign(size_t(data.slotCount + 1), 0);
        for (qsizetype i = 1; i <= data.slotCount; ++i) {
            data.tree[size_t(i)] += data.isGap(i - 1) ? 0 : 1;
            const qsizetype parent = i + (i & -i);
            if (parent <= data.slotCount)
                data.tree[size_t(parent)] += data.tree[size_t(i)];
        }
    }

    // Adds the node of a new, live last slot (slotCount already counts it).
    static void appendToTree(Data &data)
    {
        const qsizetype node = data.slotCount;
        qint32 sum = 1;
        for (qsizetype child = node - 1; child > node - (node & -node); child &= child - 1)
            sum += data.tree[size_t(child)];
        data.tree.push_back(sum);
    }

    void removeSlot(qsizetype bucket, qsizetype slot)
    {
        Data &data = *d;
        data.table[size_t(bucket)] = RemovedBucket;
        [[maybe_unused]] T dropped = std::move(data.entry(slot).value); // released once the bookkeeping is done
        data.entry(slot).key = QString();
        data.entry(slot).value = T();
        data.gaps[size_t(slot >> 6)] |= quint64(1) << (slot & 63);
        --data.live;
        if (data.live == 0) {
            d = std::make_shared<Data>();
        } else if ((data.slotCount - data.live) * 2 > data.slotCount) {
            compact(nullptr, data.live);
        } else if (data.tree.empty()) {
            buildTree(data);
        } else {
            for (qsizetype i = slot + 1; i <= data.slotCount; i += i & -i)
                --data.tree[size_t(i)];
        }
    }

    // Closes the gaps, also dropping the \a doomed slots, which leaves \a remaining
    // entries; the contents must not be shared.
    void compact(const std::vector<bool> *doomed, qsizetype remaining)
    {
        Data &data = *d;
        std::vector<std::vector<Entry>> chunks;
        qsizetype kept = 0;
        for (qsizetype slot = data.nextLive(0); slot < data.slotCount; slot = data.nextLive(slot + 1)) {
            if (doomed && (*doomed)[size_t(slot)])
                continue;
            if (kept % ChunkSize == 0) {
                chunks.emplace_back();
                chunks.back().reserve(size_t(std::min(ChunkSize, remaining - kept)));
            }
            chunks.back().push_back(std::move(data.entry(slot)));
            ++kept;
        }
        std::vector<std::vector<Entry>> old = std::exchange(data.chunks, std::move(chunks));
        data.slotCount = data.live = kept;
        data.gaps.assign(size_t((kept + 63) / 64), 0);
        data.tree.clear();
        data.tree.shrink_to_fit();
        rebuildTable(kept);
        // The removed values go last, when the collection is whole again.
        old.clear();
    }

    // Copy the contents before changing them when an enumerator still reads them.
    void detach()
    {
        if (d.use_count() > 1)
            d = std::make_shared<Data>(*d);
    }

    std::shared_ptr<Data> d;
};

} // namespace tarvonix

#endif
