// Node records of the clique searches. Vtx holds a node's index, its neighbour set and its
// incremental neighbour sets (set j: the other members of the j-th clique registered for the
// node); Vtxd adds the in- and out-neighbour sets of a directed graph and keeps neighs equal to
// their union. Every precondition failure throws Xerror_msg with the quoted text and leaves the
// record unchanged. Read accessors ending in _c return references that stay valid until the
// record changes; the others return copies. A record of a thin graph costs no allocation: the
// incremental sets and a name other than "0" take memory only once they are set.
#pragma once

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "core/types.h"

namespace kcp {

class Vtx {
 public:
  Vtx();
  explicit Vtx(const NodeIndex& index);
  Vtx(const NodeIndex& index, const NodeSet& neighs);
  Vtx(const NodeIndex& index, const NodeSet& neighs, const std::string& name);
  Vtx(const NodeIndex& index, NodeSet&& neighs);
  Vtx(const Vtx& other);
  Vtx(Vtx&& other) noexcept = default;
  virtual ~Vtx() = default;

  virtual NodeIndex Index() const;
  virtual NodeSet Neighs() const;
  virtual const NodeSet& Neighs_c() const;
  virtual std::vector<NodeSet> Inc_neighs() const;
  virtual const std::vector<NodeSet>& Inc_neighs_c() const;
  virtual std::string Name() const;

  virtual void Set_index(const NodeIndex& index);
  virtual void Set_neighs(const NodeSet& neighs);
  virtual void Set_inc_neighs(const std::vector<NodeSet>& inc_neighs);
  virtual void Set_name(const std::string& name);

  virtual void Add_neigh(const NodeIndex& n);
  virtual void Add_inc_neigh(const std::size_t& j, const NodeIndex& n);
  virtual void Remove_neigh(const NodeIndex& n);
  virtual void Remove_inc_neigh(const std::size_t& j, const NodeIndex& n);

  virtual bool operator<(const Vtx& other) const;
  virtual Vtx& operator=(const Vtx& other);
  Vtx& operator=(Vtx&& other) noexcept = default;
  virtual void Set_defaults();
  virtual void Copy(const Vtx& other);

 protected:
  // The incremental sets, made on first use.
  std::vector<NodeSet>& Inc_sets();
  void Assign_inc_sets(const std::vector<NodeSet>& sets);

  // What most records never get.
  struct Extras {
    std::vector<NodeSet> inc_neighs;
    std::string name = "0";
  };
  Extras& Own_extras();

  NodeIndex index_ = 0;
  NodeSet neighs_;
  std::unique_ptr<Extras> extras_;  // null: no incremental set and the name "0"
};

class Vtxd : public Vtx {
 public:
  Vtxd();
  explicit Vtxd(const NodeIndex& index);
  Vtxd(const NodeIndex& index, const NodeSet& oneighs, const NodeSet& ineighs);
  Vtxd(const NodeIndex& index, const NodeSet& oneighs, const NodeSet& ineighs,
       const std::string& name);
  // neighs becomes the union of the two sets.
  Vtxd(const NodeIndex& index, NodeSet&& oneighs, NodeSet&& ineighs);
  Vtxd(const Vtxd& other);
  Vtxd(Vtxd&& other) noexcept = default;
  explicit Vtxd(const Vtx& other);
  ~Vtxd() override = default;

  void Remove_neigh(const NodeIndex& n) override;
  bool operator<(const Vtx& other) const override;
  Vtxd& operator=(const Vtx& other) override;
  void Set_defaults() override;
  void Copy(const Vtx& other) override;

  virtual NodeSet Oneighs() const;
  virtual const NodeSet& Oneighs_c() const;
  virtual NodeSet Ineighs() const;
  virtual const NodeSet& Ineighs_c() const;
  virtual void Set_oneighs(const NodeSet& oneighs);
  virtual void Set_ineighs(const NodeSet& ineighs);
  virtual void Add_oneigh(const NodeIndex& n);
  virtual void Add_ineigh(const NodeIndex& n);
  virtual void Remove_oneigh(const NodeIndex& n);
  virtual void Remove_ineigh(const NodeIndex& n);
  virtual bool operator<(const Vtxd& other) const;
  virtual Vtxd& operator=(const Vtxd& other);
  Vtxd& operator=(Vtxd&& other) noexcept = default;
  virtual void Copy(const Vtxd& other);

 protected:
  NodeSet ineighs_;
  NodeSet oneighs_;
};

// Diagnostic text forms; no result file uses them.
namespace g_hor {
std::ostream& operator<<(std::ostream& out, const NodeSet& set);
std::ostream& operator<<(std::ostream& out, const Vtx& vtx);
std::ostream& operator<<(std::ostream& out, const Vtxd& vtx);
}  // namespace g_hor
namespace g_ver {
std::ostream& operator<<(std::ostream& out, const NodeSet& set);
std::ostream& operator<<(std::ostream& out, const Vtx& vtx);
std::ostream& operator<<(std::ostream& out, const Vtxd& vtx);
}  // namespace g_ver
void export_data(std::ostream& out, const NodeSet& set, const std::string& separator,
                 const std::string& opening, const std::string& closing);
void export_data(std::ostream& out, const Vtx& vtx, const std::string& separator,
                 const std::string& opening, const std::string& closing);
void export_data(std::ostream& out, const Vtxd& vtx, const std::string& separator,
                 const std::string& opening, const std::string& closing);

}  // namespace kcp
