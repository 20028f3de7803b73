<html><body>Item list<script type="text/javascript">var x=1;</script><a href="list.php?id=4">next</a> <a href="cart.asp?x=1">cart</a></body></html>
