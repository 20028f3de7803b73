<html><body>Your cart is empty <a href="../list.php?id=3">back</a></body></html>
