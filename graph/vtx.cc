#include "graph/vtx.h"

#include <string_view>
#include <utility>

#include "core/xerror_msg.h"

namespace kcp {

// ---------------------------------------------------------------------------------------------
// Vtx
// The fields start at their defaults (index 0, empty sets, name "0"), which is what
// Set_defaults would give, so the constructors only set the given fields.

namespace {

const std::vector<NodeSet>& No_sets() {
  static const std::vector<NodeSet> none;
  return none;
}

}  // namespace

Vtx::Vtx() = default;

Vtx::Vtx(const NodeIndex& index) : index_(index) {}

Vtx::Vtx(const NodeIndex& index, const NodeSet& neighs) : index_(index), neighs_(neighs) {}

Vtx::Vtx(const NodeIndex& index, const NodeSet& neighs, const std::string& name)
    : index_(index), neighs_(neighs) {
  Set_name(name);
}

Vtx::Vtx(const NodeIndex& index, NodeSet&& neighs) : index_(index), neighs_(std::move(neighs)) {}

Vtx::Vtx(const Vtx& other) : index_(other.index_), neighs_(other.neighs_) {
  if (other.extras_) extras_ = std::make_unique<Extras>(*other.extras_);
}

Vtx::Extras& Vtx::Own_extras() {
  if (!extras_) extras_ = std::make_unique<Extras>();
  return *extras_;
}

std::vector<NodeSet>& Vtx::Inc_sets() {
  return Own_extras().inc_neighs;
}

void Vtx::Assign_inc_sets(const std::vector<NodeSet>& sets) {
  if (sets.empty()) {
    if (extras_) extras_->inc_neighs.clear();
  } else if (!extras_ || &sets != &extras_->inc_neighs) {
    Own_extras().inc_neighs = sets;
  }
}

NodeIndex Vtx::Index() const {
  return index_;
}
NodeSet Vtx::Neighs() const {
  return neighs_;
}
const NodeSet& Vtx::Neighs_c() const {
  return neighs_;
}
std::vector<NodeSet> Vtx::Inc_neighs() const {
  return Inc_neighs_c();
}
const std::vector<NodeSet>& Vtx::Inc_neighs_c() const {
  return extras_ ? extras_->inc_neighs : No_sets();
}
std::string Vtx::Name() const {
  return extras_ ? extras_->name : "0";
}

void Vtx::Set_index(const NodeIndex& index) {
  index_ = index;
}
void Vtx::Set_neighs(const NodeSet& neighs) {
  neighs_ = neighs;
}
void Vtx::Set_inc_neighs(const std::vector<NodeSet>& inc_neighs) {
  Assign_inc_sets(inc_neighs);
}
void Vtx::Set_name(const std::string& name) {
  if (extras_ || name != "0") Own_extras().name = name;
}

void Vtx::Add_neigh(const NodeIndex& n) {
  if (!neighs_.insert(n).second) {
    throw Xerror_msg("ERROR: Vtx::Add_neigh() : attempt to add already exisiting neigh. ");
  }
}

void Vtx::Add_inc_neigh(const std::size_t& j, const NodeIndex& n) {
  const std::size_t sets = Inc_neighs_c().size();
  if (j > sets) throw Xerror_msg("ERROR: Vtx::Add_inc_neigh() : vec_ind too large");
  if (neighs_.find(n) == neighs_.end()) {
    throw Xerror_msg("ERROR: Vtx::Add_inc_neigh() : new ind. neigh. is not a neigh.");
  }
  if (j == sets) {
    Inc_sets().emplace_back().insert(n);
  } else {
    Inc_sets()[j].insert(n);
  }
}

void Vtx::Remove_neigh(const NodeIndex& n) {
  const auto it = neighs_.find(n);
  if (it == neighs_.end()) {
    throw Xerror_msg("ERROR: Vtx::Remove_neigh() : attempt to remove a non-existing neigh.");
  }
  neighs_.erase(it);
  // Emptied incremental sets stay: their positions are the clique numbers of the node.
  if (extras_) {
    for (NodeSet& set : extras_->inc_neighs) set.erase(n);
  }
}

void Vtx::Remove_inc_neigh(const std::size_t& j, const NodeIndex& n) {
  if (j >= Inc_neighs_c().size()) {
    throw Xerror_msg("ERROR: Vtx::Remove_inc_neigh() : vec_ind too large");
  }
  if (Inc_sets()[j].erase(n) == 0) {
    throw Xerror_msg(
        "ERROR: Vtx::Remove_inc_neigh() : attempt to remove a non-existing inc. neigh.");
  }
}

bool Vtx::operator<(const Vtx& other) const {
  return index_ < other.index_;
}

Vtx& Vtx::operator=(const Vtx& other) {
  if (this != &other) Copy(other);
  return *this;
}

void Vtx::Set_defaults() {
  index_ = 0;
  neighs_.clear();
  extras_.reset();
}

void Vtx::Copy(const Vtx& other) {
  // Assigning every field is what resetting to the defaults and then copying gives; the
  // assignments reuse the nodes the sets already own. Copying a record onto itself keeps it.
  if (this == &other) return;
  index_ = other.index_;
  neighs_ = other.neighs_;
  Assign_inc_sets(other.Inc_neighs_c());
  Set_name(other.Name());
}

// ---------------------------------------------------------------------------------------------
// Vtxd

Vtxd::Vtxd() = default;

Vtxd::Vtxd(const NodeIndex& index) : Vtx(index) {}

Vtxd::Vtxd(const NodeIndex& index, const NodeSet& oneighs, const NodeSet& ineighs) : Vtx(index) {
  Set_oneighs(oneighs);
  Set_ineighs(ineighs);
}

Vtxd::Vtxd(const NodeIndex& index, const NodeSet& oneighs, const NodeSet& ineighs,
           const std::string& name)
    : Vtx(index) {
  Set_oneighs(oneighs);
  Set_ineighs(ineighs);
  Set_name(name);
}

Vtxd::Vtxd(const NodeIndex& index, NodeSet&& oneighs, NodeSet&& ineighs)
    : Vtx(index), ineighs_(std::move(ineighs)), oneighs_(std::move(oneighs)) {
  neighs_.Unite(oneighs_);
  neighs_.Unite(ineighs_);
}

Vtxd::Vtxd(const Vtxd& other) : Vtx(other), ineighs_(other.ineighs_), oneighs_(other.oneighs_) {}

Vtxd::Vtxd(const Vtx& other) : Vtx() {
  Vtxd::Copy(other);
}

void Vtxd::Remove_neigh(const NodeIndex& n) {
  const auto it = neighs_.find(n);
  if (it == neighs_.end()) {
    throw Xerror_msg("ERROR: Vtxd::Remove_neigh() : attempt to remove a non-existing neigh.");
  }
  neighs_.erase(it);
  ineighs_.erase(n);
  oneighs_.erase(n);
  if (extras_) {
    for (NodeSet& set : extras_->inc_neighs) set.erase(n);
  }
}

bool Vtxd::operator<(const Vtx& other) const {
  return index_ < other.Index();
}

Vtxd& Vtxd::operator=(const Vtx& other) {
  if (this != &other) Copy(other);
  return *this;
}

// Only the directed sets: the index, name, neighs and inc_neighs are left alone on purpose.
void Vtxd::Set_defaults() {
  ineighs_.clear();
  oneighs_.clear();
}

// Every undirected neighbour becomes an in- and an out-neighbour. The old neighs are not
// cleared first (the set functions only add to them); kept as it is.
void Vtxd::Copy(const Vtx& other) {
  Vtxd::Set_defaults();
  index_ = other.Index();
  const NodeSet& neighs = other.Neighs_c();
  Set_oneighs(neighs);
  Set_ineighs(neighs);
  if (this != &other) {
    Assign_inc_sets(other.Inc_neighs_c());
    Set_name(other.Name());
  }
}

NodeSet Vtxd::Oneighs() const {
  return oneighs_;
}
const NodeSet& Vtxd::Oneighs_c() const {
  return oneighs_;
}
NodeSet Vtxd::Ineighs() const {
  return ineighs_;
}
const NodeSet& Vtxd::Ineighs_c() const {
  return ineighs_;
}

void Vtxd::Set_oneighs(const NodeSet& oneighs) {
  if (&oneighs != &oneighs_) oneighs_ = oneighs;
  neighs_.Unite(oneighs_);
}

void Vtxd::Set_ineighs(const NodeSet& ineighs) {
  if (&ineighs != &ineighs_) ineighs_ = ineighs;
  neighs_.Unite(ineighs_);
}

void Vtxd::Add_oneigh(const NodeIndex& n) {
  if (!oneighs_.insert(n).second) {
    throw Xerror_msg("ERROR: Vtxd::Add_oneigh() : attempt to add already exisiting neigh. ");
  }
  neighs_.insert(n);
}

void Vtxd::Add_ineigh(const NodeIndex& n) {
  if (!ineighs_.insert(n).second) {
    throw Xerror_msg("ERROR: Vtxd::Add_ineigh() : attempt to add already exisiting neigh. ");
  }
  neighs_.insert(n);
}

void Vtxd::Remove_oneigh(const NodeIndex& n) {
  if (oneighs_.erase(n) == 0) {
    throw Xerror_msg("ERROR: Vtxd::Remove_oneigh() : attempt to remove a non-existing oneigh.");
  }
  if (ineighs_.find(n) == ineighs_.end()) neighs_.erase(n);
}

void Vtxd::Remove_ineigh(const NodeIndex& n) {
  if (ineighs_.erase(n) == 0) {
    throw Xerror_msg("ERROR: Vtxd::Remove_ineigh() : attempt to remove a non-existing ineigh.");
  }
  if (oneighs_.find(n) == oneighs_.end()) neighs_.erase(n);
}

bool Vtxd::operator<(const Vtxd& other) const {
  return index_ < other.index_;
}

Vtxd& Vtxd::operator=(const Vtxd& other) {
  if (this != &other) Copy(other);
  return *this;
}

void Vtxd::Copy(const Vtxd& other) {
  if (this == &other) return;
  index_ = other.index_;
  neighs_ = other.neighs_;
  oneighs_ = other.oneighs_;
  ineighs_ = other.ineighs_;
  Assign_inc_sets(other.Inc_neighs_c());
  Set_name(other.Name());
}

// ---------------------------------------------------------------------------------------------
// Text forms

namespace {

void Put_joined(std::ostream& out, const NodeSet& set, std::string_view separator) {
  bool first = true;
  for (const NodeIndex& n : set) {
    if (!first) out << separator;
    out << n;
    first = false;
  }
}

// The incremental sets of the horizontal form: all but the last as "  " + set + " , ", then the
// last alone. A record without sets prints nothing here.
void Put_inc_hor(std::ostream& out, const std::vector<NodeSet>& sets) {
  if (sets.empty()) return;
  for (std::size_t j = 0; j + 1 < sets.size(); ++j) {
    out << "  ";
    Put_joined(out, sets[j], " ");
    out << " , ";
  }
  Put_joined(out, sets.back(), " ");
}

void Put_vertical(std::ostream& out, const NodeSet& set) {
  for (const NodeIndex& n : set) out << n << '\n';
}

void Put_export_sets(std::ostream& out, const std::vector<NodeSet>& sets,
                     const std::string& separator, const std::string& opening,
                     const std::string& closing) {
  for (std::size_t j = 0; j < sets.size(); ++j) {
    if (j > 0) out << separator;
    export_data(out, sets[j], separator, opening, closing);
  }
}

}  // namespace

namespace g_hor {

std::ostream& operator<<(std::ostream& out, const NodeSet& set) {
  Put_joined(out, set, " ");
  return out;
}

std::ostream& operator<<(std::ostream& out, const Vtx& vtx) {
  out << "{" << vtx.Index() << " '" << vtx.Name() << "' : neighs. :";
  Put_joined(out, vtx.Neighs_c(), " ");
  out << "  inc_neighs. : ";
  Put_inc_hor(out, vtx.Inc_neighs_c());
  return out << "}";
}

std::ostream& operator<<(std::ostream& out, const Vtxd& vtx) {
  out << "{" << vtx.Index() << " '" << vtx.Name() << "' : oneighs. : ";
  Put_joined(out, vtx.Oneighs_c(), " ");
  out << "  ineighs. : ";
  Put_joined(out, vtx.Ineighs_c(), " ");
  out << "  inc_neighs. : ";
  Put_inc_hor(out, vtx.Inc_neighs_c());
  return out << "}";
}

}  // namespace g_hor

namespace g_ver {

std::ostream& operator<<(std::ostream& out, const NodeSet& set) {
  Put_vertical(out, set);
  return out;
}

std::ostream& operator<<(std::ostream& out, const Vtx& vtx) {
  out << vtx.Index() << " '" << vtx.Name() << "' :" << '\n' << " neighs. :" << '\n';
  Put_vertical(out, vtx.Neighs_c());
  out << "  inc_neighs. : " << '\n';
  for (const NodeSet& set : vtx.Inc_neighs_c()) Put_vertical(out, set);
  return out;
}

std::ostream& operator<<(std::ostream& out, const Vtxd& vtx) {
  out << vtx.Index() << " '" << vtx.Name() << "' :" << '\n' << " oneighs. :" << '\n';
  Put_vertical(out, vtx.Oneighs_c());
  out << " ineighs. : " << '\n';
  Put_vertical(out, vtx.Ineighs_c());
  out << "  inc_neighs. : " << '\n';
  for (const NodeSet& set : vtx.Inc_neighs_c()) Put_vertical(out, set);
  return out;
}

}  // namespace g_ver

void export_data(std::ostream& out, const NodeSet& set, const std::string& separator,
                 const std::string& opening, const std::string& closing) {
  out << opening;
  Put_joined(out, set, separator);
  out << closing;
}

void export_data(std::ostream& out, const Vtx& vtx, const std::string& separator,
                 const std::string& opening, const std::string& closing) {
  out << vtx.Index() << " (" << vtx.Name() << ") : neighs. :";
  export_data(out, vtx.Neighs_c(), separator, opening, closing);
  out << separator << " inc_neighs. :";
  Put_export_sets(out, vtx.Inc_neighs_c(), separator, opening, closing);
}

void export_data(std::ostream& out, const Vtxd& vtx, const std::string& separator,
                 const std::string& opening, const std::string& closing) {
  out << vtx.Index() << " (" << vtx.Name() << ") : "
      << " oneighs. :";
  export_data(out, vtx.Oneighs_c(), separator, opening, closing);
  out << separator << " ineighs. :";
  export_data(out, vtx.Ineighs_c(), separator, opening, closing);
  out << separator << " inc_neighs. :";
  Put_export_sets(out, vtx.Inc_neighs_c(), separator, opening, closing);
}

}  // namespace kcp
