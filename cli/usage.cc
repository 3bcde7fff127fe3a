#include "cli/usage.h"

#include "text/console.h"

namespace kcp {

namespace {

constexpr std::size_t kBannerWidth = 52;

// An example command line of the help text.
void Print_example(const std::string& prog, const std::string& switches) {
  Print_line("   " + prog + switches);
}

}  // namespace

void Print_banner() {
  Print_underscores(kBannerWidth);
  Print_line("Varnel 1.0: overlapping communities by k-clique percolation");
  Print_line(" Lists the maximal cliques of a network and its k-clique");
  Print_line(" communities for every k, with their statistics.");
}

void Print_usage(const std::string& prog, const std::string& errors) {
  Print_banner();
  Print_line("");
  Print_line(" Error:");
  Print_line(errors);
  Print_line(" Usage : " + prog + " -i input_file ");
  Print_line("         by default the results will be written to an output");
  Print_line("         directory named after the input file with a '_files' suffix.");
  Print_line(" Options: ");
  Print_line("  -i  specify input file.                       (Mandatory)");
  Print_line("  -o  specify output directory.                 (Optional)");
  Print_line("  -w  specify lower link weight threshold.      (Optional)");
  Print_line("  -W  specify upper link weight threshold.      (Optional)");
  Print_line("  -d  specify number of digits when creating");
  Print_line("      the name of the default output directory");
  Print_line("      of the link weight thresholded input.     (Optional)");
  Print_line("  -t  specify maximal time allowed for ");
  Print_line("      clique search per node.                   (Optional)");
  Print_line("  -D  search with directed method.              (Optional)");
  Print_line("  -U  search with un-directed method.           (Default)");
  Print_line("      (Declare explicitly the input and the ");
  Print_line("      modules to be un-directed.)");
  Print_line("  -I  search with intensity method and specify");
  Print_line("      the lower link weight intensity threshold");
  Print_line("      for the k-cliques.                        (Optional)");
  Print_line("  -k  specify the k-clique size.                (Optional)");
  Print_line("      (Advised to use it only when a ");
  Print_line("      link weight intensity threshold is set.)");
  Print_line("  -h  help. More details about these options.");
}

void Print_detailed_usage(const std::string& prog) {
  Print_line(" When using " + prog + " you must specify at least the ");
  Print_line(" input file using the switch -i. ");
  Print_line(" Example:");
  Print_line("");
  Print_example(prog, " -i my_links.dat ");
  Print_line("");
  Print_line("   In this example Varnel will try to read the links of the ");
  Print_line("   graph from 'my_links.dat' and will create a directory named");
  Print_line("   'my_links.dat_files' to store the results of the community");
  Print_line("   finding.");
  Print_line("");

  Print_line(" Optionally you can specify an output directory for " + prog);
  Print_line(" using the switch -o.");
  Print_line(" Example:");
  Print_line("");
  Print_example(prog, " -i my_links.dat -o my_dir");
  Print_line("");
  Print_line("   In this example Varnel will write the results to 'my_dir'.");
  Print_line("");

  // The quotes left open in the directory names below are part of the text.
  Print_line(" Optionally you can set upper or/and lower weight thresholds");
  Print_line(" for the links using the -w and -W switches.");
  Print_line(" Examples:");
  Print_line("");
  Print_example(prog, " -i my_links.dat -w 0.15");
  Print_example(prog, " -i my_links.dat -W 1.35");
  Print_example(prog, " -i my_links.dat -w 0.15 -W 1.35");
  Print_line("");
  Print_line("   -In the 1st example " + prog + " will ignore the links");
  Print_line("    weaker than 0.15, and the results will be written into a");
  Print_line("    directory named 'my_links.dat_files_0.150_w by default.");
  Print_line("   -In the 2nd example " + prog + " will ignore the links");
  Print_line("    stronger than 1.35, and the results will be written into a");
  Print_line("    directory named 'my_links.dat_files_w_1.350 by default.");
  Print_line("   -In the 3rd example " + prog + " will ignore links");
  Print_line("    weaker than 0.15 or stronger than 1.35, and the results ");
  Print_line("    will be written into a directory named");
  Print_line("    'my_links.dat_files_0.150_w_1.350 by default.");
  Print_line("");

  // The help speaks of 3 digits although the program's default is 6; kept as is on purpose.
  Print_line(" Optionally you can set the number of digits to be taken into");
  Print_line(" account when creating the output directory name using the switch -d.");
  Print_line(" The default value is 3 digits.");
  Print_line(" Examples:");
  Print_line("");
  Print_example(prog, " -i my_links.dat -w 0.15327 -d 2");
  Print_example(prog, " -i my_links.dat -w 0.15327 -d 4");
  Print_line("");
  Print_line("   -In the 1st example the output directory will be ");
  Print_line("    'my_links.dat_files_0.15_w'.");
  Print_line("   -In the 2nd example the output directory will be ");
  Print_line("    'my_links.dat_files_0.1533_w'.");
  Print_line("");

  Print_line(" Optionally you can set the maximal allowed time in seconds for ");
  Print_line(" searching for the cliques of a node using the switch -t.");
  Print_line(" Example:");
  Print_line("");
  Print_example(prog, " -i my_links.dat -t 2.75");
  Print_line("");
  Print_line("    In this example the maximal allowed time per node is ");
  Print_line("    2.75 secs.");
  Print_line("");

  Print_line(" Optionally you can set the cliques (and the communities) ");
  Print_line(" to be directed using the switch -D.");
  Print_line("");

  Print_line(" Optionally you can explicitly declare the usage of the undirected");
  Print_line(" search algorithm using the switch -U.");
  Print_line(" (Has no effect except that it cannot be set together with -D).");
  Print_line("");

  Print_line(" Optionally you can set a lower link weight intensity");
  Print_line(" threshold for the k-cliques using the switch -I.");
  Print_line(" Example:");
  Print_line("");
  Print_example(prog, " -i my_links.dat -I 0.35");
  Print_line("");
  Print_line("    In this example the lower link weight intensity for the ");
  Print_line("    k-cliques is 0.35.");
  Print_line(" Note that when -I is active, the -D and the -t switches ");
  Print_line(" cannot be active as well.");
  Print_line("");

  Print_line(" Optionally you can specify the k-clique size using the ");
  Print_line(" switch -k. (Otherwise the communities are extracted at every");
  Print_line(" possible k-clique size). This switch can be useful when using");
  Print_line(" a link weight intensity threshold, since in such case the");
  Print_line(" intensities have to be calculated in every single k-cliques,");
  Print_line(" and the extraction of the communities becomes very slow.");
  Print_line(" Example:");
  Print_line("");
  Print_example(prog, " -i my_links.dat -I 0.35 -k 4");
  Print_line("");
  Print_line("    In this example the lower link weight intensity for the ");
  Print_line("    k-cliques is 0.35, and the communities are extracted at a");
  Print_line("    k-clique size k=4");
  Print_line("");

  Print_line("");
  Print_line("");
  Print_line("");
  Print_banner();
}

}  // namespace kcp
